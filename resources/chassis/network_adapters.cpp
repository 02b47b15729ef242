// The host's network adapters in the chassis.
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "platform/libipmi_sensors.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/chassis/host_adapters.h"
#include "resources/chassis/networkadapter.h"
#include "resources/chassis/networkadaptercollection.h"
#include "resources/systems/member_uri.h"

namespace odata::redfish {
namespace {

boost::json::array controllers(const St_HostNicAdapter& adapter) {
    boost::json::object controller{
        {"FirmwarePackageVersion", adapter.firmware_version},
        {"ControllerCapabilities", {{"NetworkPortCount", adapter.port_count}}},
        {"PCIeInterface", adapter_pcie_interface(adapter)},
        {"Links", {{"PCIeDevices", boost::json::array{link(nic_member_uri(adapter.adapter))}}}}};
    return {std::move(controller)};
}

}  // namespace

networkadaptercollection::networkadaptercollection(request_context& context)
    : redfish(context, "NetworkAdapterCollection", "", "Network Adapter Collection",
              network_adapters_uri) {}

int networkadaptercollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> uris;
    for (int number = 1; host_adapter(number); ++number)
        uris.push_back(network_adapter_member_uri(number));
    set_members(uris);
    return 0;
}

networkadapter::networkadapter(request_context& context)
    : redfish(context, "NetworkAdapter", std::string(schema_file_of("NetworkAdapter").version),
              "Network Adapter", member_uri(network_adapters_uri, context)) {}

int networkadapter::get(request_context& context) {
    const std::optional<St_HostNicAdapter> adapter = host_adapter(member_number(context));
    if (!adapter) throw_member_not_found("NetworkAdapter", context);
    set_common_properties();
    set("Manufacturer", adapter->manufacturer);
    set("Model", adapter->model);
    set("PartNumber", adapter->part_number);
    set("SerialNumber", adapter->serial_number);
    set("Status", status_object(SENSOR_HEALTH_OK));
    set("Controllers", controllers(*adapter));
    return 0;
}

}  // namespace odata::redfish
