#include "resources/chassis/host_adapters.h"

#include "resources/chassis/chassis_uris.h"

namespace odata::redfish {

std::optional<St_HostNicAdapter> host_adapter(int number) {
    St_HostNicAdapter adapter{};
    if (number < 1 || NicGetAdapter(number - 1, &adapter) != PLT_OK) return std::nullopt;
    return adapter;
}

std::vector<St_HostNicPort> adapter_ports(int adapter) {
    std::vector<St_HostNicPort> ports;
    for (int index = 0; index < NicGetPortCount(); ++index) {
        St_HostNicPort port{};
        if (NicGetPort(index, &port) == PLT_OK && port.adapter == adapter) ports.push_back(port);
    }
    return ports;
}

std::string network_adapter_member_uri(int number) {
    return std::string(network_adapters_uri) + "/" + std::to_string(number);
}

}  // namespace odata::redfish
