// The host's PCIe devices in the chassis and their functions, built alike
// for every kind from what the platform's inventory reports.
#include <cstdio>

#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "platform/libipmi_sensors.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/chassis/host_adapters.h"
#include "resources/chassis/pcie_device.h"
#include "resources/chassis/pcie_inventory.h"
#include "resources/chassis/pciedevicescollection.h"

namespace odata::redfish {
namespace {

St_PcieDevice existing_device(const request_context& context) {
    const std::optional<St_PcieDevice> device = requested_pcie_device(context);
    if (!device)
        throw_http_error(404, "Base.1.10.ResourceNotFound",
                         {"PCIeDevice", requested_pcie_device_uri(context)});
    return *device;
}

// A link that trained below what both ends support is degraded; one that
// did not train at all has lost the device.
int link_health(const St_PcieDevice& device) {
    if (device.generation == 0) return SENSOR_HEALTH_CRITICAL;
    if (device.generation < device.max_generation || device.lanes < device.max_lanes)
        return SENSOR_HEALTH_WARNING;
    return SENSOR_HEALTH_OK;
}

std::string hex_id(unsigned value, int digits) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%0*x", digits, value);
    return text;
}

// The PCI base class of a function as Redfish names it.
const char* device_class(uint32_t class_code) {
    switch (class_code >> 16) {
        case 0x01:
            return "MassStorageController";
        case 0x02:
            return "NetworkController";
        case 0x03:
            return "DisplayController";
        case 0x12:
            return "ProcessingAccelerators";
        default:
            return "Other";
    }
}

std::string function_uri(const request_context& context) {
    const int function = context.capture_number(2);
    return requested_pcie_device_uri(context) + "/PCIeFunctions/" +
           (function < 0 ? context.captures.back() : std::to_string(function));
}

// A network adapter's function f serves its port f + 1.
boost::json::object function_links(const St_PcieDevice& device, int function) {
    boost::json::object links({{"PCIeDevice", link(pcie_device_uri(device))}}, answer_storage());
    if (device.kind == PCIE_KIND_NIC)
        links["NetworkDeviceFunctions"] =
            link_array(network_adapter_member_uri(device.number) + "/NetworkDeviceFunctions/" +
                       std::to_string(function + 1));
    return links;
}

}  // namespace

pciedevicescollection::pciedevicescollection(request_context& context)
    : redfish(context, "PCIeDeviceCollection", "", "PCIe Device Collection", pcie_devices_uri) {}

int pciedevicescollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> uris;
    for (const St_PcieDevice& device : pcie_devices()) uris.push_back(pcie_device_uri(device));
    set_members(uris);
    return 0;
}

pcie_device::pcie_device(request_context& context)
    : redfish(context, "PCIeDevice", std::string(schema_file_of("PCIeDevice").version),
              pcie_device_name(requested_pcie_kind(context)), requested_pcie_device_uri(context)) {}

int pcie_device::get(request_context& context) {
    const St_PcieDevice device = existing_device(context);
    set_common_properties();
    set("Manufacturer", device.manufacturer);
    set("Model", device.model);
    set("PartNumber", device.part_number);
    set("SerialNumber", device.serial_number);
    set("FirmwareVersion", device.firmware_version);
    set("DeviceType", device.function_count > 1 ? "MultiFunction" : "SingleFunction");
    set("PCIeInterface", pcie_interface(device));
    set("PCIeFunctions", link(uri_ + "/PCIeFunctions"));
    set("Links", {{"Chassis", link_array(chassis_uri)}});
    set("Status", status_object(link_health(device)));
    return 0;
}

pcie_function_collection::pcie_function_collection(request_context& context)
    : redfish(context, "PCIeFunctionCollection", "", "PCIe Function Collection",
              requested_pcie_device_uri(context) + "/PCIeFunctions") {}

int pcie_function_collection::get(request_context& context) {
    const St_PcieDevice device = existing_device(context);
    set_common_properties();
    std::vector<std::string> uris;
    for (int function = 0; function < device.function_count; ++function)
        uris.push_back(pcie_function_uri(device.kind, device.number, function));
    set_members(uris);
    return 0;
}

pcie_function::pcie_function(request_context& context)
    : redfish(context, "PCIeFunction", std::string(schema_file_of("PCIeFunction").version),
              "PCIe Function", function_uri(context)) {}

int pcie_function::get(request_context& context) {
    const St_PcieDevice device = existing_device(context);
    const int function = context.capture_number(2);
    if (function < 0 || function >= device.function_count)
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"PCIeFunction", uri_});
    set_common_properties();
    set("FunctionId", function);
    set("FunctionType", "Physical");
    set("DeviceClass", device_class(device.class_code));
    set("VendorId", hex_id(device.vendor_id, 4));
    set("DeviceId", hex_id(device.device_id, 4));
    set("SubsystemVendorId", hex_id(device.subsystem_vendor_id, 4));
    set("SubsystemId", hex_id(device.subsystem_id, 4));
    set("ClassCode", hex_id(device.class_code, 6));
    set("Status", status_object(link_health(device)));
    set("Links", function_links(device, function));
    return 0;
}

}  // namespace odata::redfish
