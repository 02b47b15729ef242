#include "resources/chassis/host_adapters.h"

#include "resources/chassis/chassis_uris.h"

namespace odata::redfish {

std::optional<St_HostNicAdapter> host_adapter(int number) {
    St_HostNicAdapter adapter{};
    if (number < 1 || NicGetAdapter(number - 1, &adapter) != PLT_OK) return std::nullopt;
    return adapter;
}

std::string network_adapter_member_uri(int number) {
    return std::string(network_adapters_uri) + "/" + std::to_string(number);
}

std::string nic_member_uri(int number) {
    return std::string(pcie_devices_uri) + "/NIC" + std::to_string(number);
}

std::string pcie_type(int generation) { return "Gen" + std::to_string(generation); }

boost::json::object adapter_pcie_interface(const St_HostNicAdapter& adapter) {
    St_PcieSlot slot{};
    if (PcieGetSlot(adapter.slot - 1, &slot) != PLT_OK) return {};
    return {{"PCIeType", pcie_type(slot.generation)},
            {"MaxPCIeType", pcie_type(slot.generation)},
            {"LanesInUse", slot.lanes},
            {"MaxLanes", slot.lanes}};
}

}  // namespace odata::redfish
