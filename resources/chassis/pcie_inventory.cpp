#include "resources/chassis/pcie_inventory.h"

#include "frontend/answer_storage.h"
#include "resources/chassis/chassis_uris.h"

namespace odata::redfish {
namespace {

struct kind_facts {
    const char* prefix;  // as the route names it
    const char* device_name;
};

constexpr kind_facts kinds[PCIE_KIND_COUNT] = {
    {"NIC", "Network Adapter PCIe Device"},
    {"GPU", "GPU PCIe Device"},
    {"NVMeSSD", "NVMe SSD PCIe Device"},
    {"PCIeSSD", "PCIe SSD PCIe Device"},
};

int kind_of(const std::string& prefix) {
    for (int kind = 0; kind < PCIE_KIND_COUNT; ++kind)
        if (prefix == kinds[kind].prefix) return kind;
    return -1;
}

}  // namespace

std::vector<St_PcieDevice> pcie_devices() {
    std::vector<St_PcieDevice> devices;
    for (int index = 0; index < PCIE_DEVICES_MAX; ++index) {
        St_PcieDevice device{};
        if (PcieGetDevice(index, &device) != PLT_OK) break;
        if (device.kind < PCIE_KIND_COUNT) devices.push_back(device);
    }
    return devices;
}

int requested_pcie_kind(const request_context& context) {
    return context.captures.empty() ? -1 : kind_of(context.captures[0]);
}

// Asks the platform device by device, up to the one sought.
std::optional<St_PcieDevice> find_pcie_device(int kind, int number) {
    for (int index = 0; index < PCIE_DEVICES_MAX; ++index) {
        St_PcieDevice device{};
        if (PcieGetDevice(index, &device) != PLT_OK) break;
        if (device.kind == kind && device.number == number) return device;
    }
    return std::nullopt;
}

std::optional<St_PcieDevice> requested_pcie_device(const request_context& context) {
    return find_pcie_device(requested_pcie_kind(context), context.capture_number(1));
}

std::string requested_pcie_device_uri(const request_context& context) {
    const int number = context.capture_number(1);
    const std::string prefix = context.captures.empty() ? "" : context.captures[0];
    return std::string(pcie_devices_uri) + "/" + prefix +
           (number < 0 ? std::string() : std::to_string(number));
}

std::string pcie_device_uri(int kind, int number) {
    return std::string(pcie_devices_uri) + "/" + kinds[kind].prefix + std::to_string(number);
}

std::string pcie_device_uri(const St_PcieDevice& device) {
    return pcie_device_uri(device.kind, device.number);
}

std::string pcie_function_uri(int kind, int number, int function) {
    return pcie_device_uri(kind, number) + "/PCIeFunctions/" + std::to_string(function);
}

std::string pcie_device_name(int kind) {
    return kind >= 0 && kind < PCIE_KIND_COUNT ? kinds[kind].device_name : "PCIe Device";
}

std::string pcie_type(int generation) { return "Gen" + std::to_string(generation); }

boost::json::object pcie_interface(const St_PcieDevice& device) {
    boost::json::object link(answer_storage());
    if (device.generation != 0) link["PCIeType"] = pcie_type(device.generation);
    link["MaxPCIeType"] = pcie_type(device.max_generation);
    link["LanesInUse"] = device.generation != 0 ? device.lanes : 0;
    link["MaxLanes"] = device.max_lanes;
    return link;
}

std::optional<St_PcieDevice> pcie_device_in_slot(int slot) {
    for (const St_PcieDevice& device : pcie_devices())
        if (device.slot == slot) return device;
    return std::nullopt;
}

}  // namespace odata::redfish
