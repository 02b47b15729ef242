// The host's network interfaces: one per network adapter, with its number.
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "platform/libipmi_sensors.h"
#include "resources/chassis/host_adapters.h"
#include "resources/systems/member_uri.h"
#include "resources/systems/networkinterfacecollection.h"
#include "resources/systems/networkinterfaces.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {

networkinterfacecollection::networkinterfacecollection(request_context& context)
    : redfish(context, "NetworkInterfaceCollection", "", "Network Interface Collection",
              network_interfaces_uri) {}

int networkinterfacecollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> uris;
    for (int number = 1; host_adapter(number); ++number)
        uris.push_back(std::string(network_interfaces_uri) + "/" + std::to_string(number));
    set_members(uris);
    return 0;
}

networkinterfaces::networkinterfaces(request_context& context)
    : redfish(context, "NetworkInterface", std::string(schema_file_of("NetworkInterface").version),
              "Network Interface", member_uri(network_interfaces_uri, context)) {}

int networkinterfaces::get(request_context& context) {
    const std::optional<St_HostNicAdapter> adapter = host_adapter(member_number(context));
    if (!adapter) throw_member_not_found("NetworkInterface", context);
    set_common_properties();
    set("Status", status_object(SENSOR_HEALTH_OK));
    set("NetworkPorts", link(uri() + "/NetworkPorts"));
    set("NetworkDeviceFunctions", link(uri() + "/NetworkDeviceFunctions"));
    set("Links", {{"NetworkAdapter", link(network_adapter_member_uri(adapter->adapter))}});
    return 0;
}

}  // namespace odata::redfish
