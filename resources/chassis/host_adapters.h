// The host's network adapters and PCIe slots as the platform reports them,
// by their 1-based numbers.
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>

#include "platform/libnic.h"
#include "platform/libpcie.h"

namespace odata::redfish {

std::optional<St_HostNicAdapter> host_adapter(int number);

// "/redfish/v1/Chassis/1/NetworkAdapters/1" and "/redfish/v1/Chassis/1/PCIeDevices/NIC1".
std::string network_adapter_member_uri(int number);
std::string nic_member_uri(int number);

// "Gen4".
std::string pcie_type(int generation);

// The PCIe link of the slot the adapter sits in; empty when the slot is
// not known.
boost::json::object adapter_pcie_interface(const St_HostNicAdapter& adapter);

}  // namespace odata::redfish
