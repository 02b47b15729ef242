// The host's PCIe devices and functions as the platform reports them, and
// their URIs: "/redfish/v1/Chassis/1/PCIeDevices/GPU1", ".../PCIeFunctions/0".
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "frontend/request_context.h"
#include "platform/libpcie.h"

namespace odata::redfish {

// Every device, ordered by kind and number.
std::vector<St_PcieDevice> pcie_devices();

// A device by its kind and number.
std::optional<St_PcieDevice> find_pcie_device(int kind, int number);

// The kind that a device or function route names by its first capture;
// -1 for none.
int requested_pcie_kind(const request_context& context);

// The device that a device or function route names by its captures (kind
// prefix, number); none when there is no such device.
std::optional<St_PcieDevice> requested_pcie_device(const request_context& context);

// The device URI that a route's captures name, whether or not it exists.
std::string requested_pcie_device_uri(const request_context& context);

std::string pcie_device_uri(const St_PcieDevice& device);
std::string pcie_device_uri(int kind, int number);
std::string pcie_function_uri(int kind, int number, int function);

// "Network Adapter PCIe Device".
std::string pcie_device_name(int kind);

// "Gen4".
std::string pcie_type(int generation);

// {"PCIeType", "MaxPCIeType", "LanesInUse", "MaxLanes"}; PCIeType is left
// out while the link is down.
boost::json::object pcie_interface(const St_PcieDevice& device);

// The device in a slot (1-based), if any.
std::optional<St_PcieDevice> pcie_device_in_slot(int slot);

}  // namespace odata::redfish
