// The host's network adapters as the platform reports them, by their
// 1-based numbers.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/libnic.h"

namespace odata::redfish {

std::optional<St_HostNicAdapter> host_adapter(int number);

// The ports of an adapter, by port number.
std::vector<St_HostNicPort> adapter_ports(int adapter);

// "/redfish/v1/Chassis/1/NetworkAdapters/1".
std::string network_adapter_member_uri(int number);

}  // namespace odata::redfish
