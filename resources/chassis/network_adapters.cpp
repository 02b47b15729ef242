// The host's network adapters in the chassis.
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "platform/libipmi_sensors.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/chassis/host_adapters.h"
#include "resources/chassis/networkadapter.h"
#include "resources/chassis/networkadaptercollection.h"
#include "resources/chassis/pcie_inventory.h"
#include "resources/systems/member_uri.h"

namespace odata::redfish {
namespace {

boost::json::array member_links(const std::string& collection_uri, int count) {
    boost::json::array links(answer_storage());
    for (int number = 1; number <= count; ++number)
        links.push_back(link(collection_uri + "/" + std::to_string(number)));
    return links;
}

boost::json::array controllers(const St_HostNicAdapter& adapter) {
    const std::string uri = network_adapter_member_uri(adapter.adapter);
    const std::optional<St_PcieDevice> device = find_pcie_device(PCIE_KIND_NIC, adapter.adapter);
    boost::json::object links(
        {{"PCIeDevices", link_array(pcie_device_uri(PCIE_KIND_NIC, adapter.adapter))},
         {"NetworkPorts", member_links(uri + "/NetworkPorts", adapter.port_count)},
         {"NetworkDeviceFunctions",
          member_links(uri + "/NetworkDeviceFunctions", adapter.port_count)}},
        answer_storage());
    return boost::json::array(
        {{{"FirmwarePackageVersion", adapter.firmware_version},
          {"ControllerCapabilities", {{"NetworkPortCount", adapter.port_count}}},
          {"PCIeInterface",
           device ? pcie_interface(*device) : boost::json::object(answer_storage())},
          {"Links", std::move(links)}}},
        answer_storage());
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
    set("NetworkPorts", link(uri_ + "/NetworkPorts"));
    set("NetworkDeviceFunctions", link(uri_ + "/NetworkDeviceFunctions"));
    return 0;
}

}  // namespace odata::redfish
