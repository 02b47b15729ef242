// The host's PCIe devices in the chassis: its network adapters, NIC<n>.
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/exception_http.h"
#include "platform/libipmi_sensors.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/chassis/host_adapters.h"
#include "resources/chassis/nic.h"
#include "resources/chassis/pciedevicescollection.h"

namespace odata::redfish {
namespace {

// "NIC" and the number are the route's two captures.
int nic_number(const request_context& context) { return context.capture_number(1); }

std::string nic_uri(const request_context& context) {
    const int number = nic_number(context);
    return number < 0 ? std::string(pcie_devices_uri) + "/NIC" : nic_member_uri(number);
}

}  // namespace

pciedevicescollection::pciedevicescollection(request_context& context)
    : redfish(context, "PCIeDeviceCollection", "", "PCIe Device Collection", pcie_devices_uri) {}

int pciedevicescollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> uris;
    for (int number = 1; host_adapter(number); ++number) uris.push_back(nic_member_uri(number));
    set_members(uris);
    return 0;
}

nic::nic(request_context& context)
    : redfish(context, "PCIeDevice", std::string(schema_file_of("PCIeDevice").version),
              "Network Adapter PCIe Device", nic_uri(context)) {}

int nic::get(request_context& context) {
    const std::optional<St_HostNicAdapter> adapter = host_adapter(nic_number(context));
    if (!adapter) throw_http_error(404, "Base.1.10.ResourceNotFound", {"PCIeDevice", uri_});
    set_common_properties();
    set("Manufacturer", adapter->manufacturer);
    set("Model", adapter->model);
    set("PartNumber", adapter->part_number);
    set("SerialNumber", adapter->serial_number);
    set("FirmwareVersion", adapter->firmware_version);
    set("DeviceType", adapter->port_count > 1 ? "MultiFunction" : "SingleFunction");
    set("PCIeInterface", adapter_pcie_interface(*adapter));
    set("Status", status_object(SENSOR_HEALTH_OK));
    return 0;
}

}  // namespace odata::redfish
