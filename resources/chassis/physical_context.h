// PhysicalContext of temperature and voltage sensors, chosen from the
// sensor's name.
#pragma once

#include <string_view>

namespace odata::redfish {

inline constexpr const char* default_physical_context = "SystemBoard";

// "SystemBoard" unless the name names a component or device: "CPU", then
// "Memory" for DIMMs, "ASIC", "StorageDevice" or "Backplane".
const char* temperature_physical_context(std::string_view sensor_name);

// "CPU" for core rails ("Vcpu"), "Memory" for DIMM rails ("VDimmP"),
// otherwise "SystemBoard".
const char* voltage_physical_context(std::string_view sensor_name);

}  // namespace odata::redfish
