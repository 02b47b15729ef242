#include "resources/managers/serial_interfaces.h"

#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "platform/libserial.h"
#include "platform/libweb.h"
#include "resources/managers/manager_uris.h"

namespace odata::redfish {
namespace {

std::string port_uri(int port) {
    return std::string(manager_serial_interfaces_uri) + "/" + std::to_string(port);
}

const char* parity_name(char parity) {
    if (parity == 'E') return "Even";
    if (parity == 'O') return "Odd";
    return "None";
}

}  // namespace

serialInterfacecollection::serialInterfacecollection(request_context& context)
    : redfish(context, "SerialInterfaceCollection", "", "Serial Interface Collection",
              manager_serial_interfaces_uri) {}

int serialInterfacecollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members;
    for (int port = 1; port <= SERIAL_PORT_COUNT; ++port) members.push_back(port_uri(port));
    set_members(members);
    return 0;
}

serialInterface::serialInterface(request_context& context)
    : redfish(context, "SerialInterface", std::string(schema_file_of("SerialInterface").version),
              "Serial Console Port", context.uri) {}

int serialInterface::get(request_context& context) {
    const int port = context.capture_number(0);
    if (port < 1 || context.captures[0] != std::to_string(port)) throw_http(404);
    St_SerialConfig config;
    const int code = PltSERIAL_GetConfig(port, &config);
    if (code == PLT_ERR_NOT_FOUND) throw_http(404);
    if (code != PLT_OK) {
        console_log("[ERROR] SerialInterface %d: settings unreadable\n", port);
        throw_http_error(500, "Base.1.10.InternalError");
    }
    uri_ = port_uri(port);
    set_common_properties();
    set("Description", "Serial console port of the BMC");
    set("InterfaceEnabled", config.enabled != 0);
    set("SignalType", "Rs232");
    set("BitRate", std::to_string(config.bit_rate));
    set("Parity", parity_name(config.parity));
    set("DataBits", std::to_string(config.data_bits));
    set("StopBits", std::to_string(config.stop_bits));
    set("FlowControl", config.hardware_flow_control ? "Hardware" : "None");
    set("ConnectorType", "RJ45");
    set("PinOut", "Cisco");
    return 0;
}

}  // namespace odata::redfish
