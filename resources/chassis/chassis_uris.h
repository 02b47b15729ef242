// The URIs of the chassis and of what belongs to it.
#pragma once

namespace odata::redfish {

inline constexpr const char* chassis_collection_uri = "/redfish/v1/Chassis";
inline constexpr const char* chassis_uri = "/redfish/v1/Chassis/1";
inline constexpr const char* power_uri = "/redfish/v1/Chassis/1/Power";
inline constexpr const char* thermal_uri = "/redfish/v1/Chassis/1/Thermal";
inline constexpr const char* power_subsystem_uri = "/redfish/v1/Chassis/1/PowerSubsystem";
inline constexpr const char* thermal_subsystem_uri = "/redfish/v1/Chassis/1/ThermalSubsystem";
inline constexpr const char* environment_metrics_uri = "/redfish/v1/Chassis/1/EnvironmentMetrics";
inline constexpr const char* sensors_uri = "/redfish/v1/Chassis/1/Sensors";
inline constexpr const char* controls_uri = "/redfish/v1/Chassis/1/Controls";
inline constexpr const char* power_limit_control_uri = "/redfish/v1/Chassis/1/Controls/PowerLimit";
inline constexpr const char* host_system_uri = "/redfish/v1/Systems/1";
inline constexpr const char* processors_uri = "/redfish/v1/Systems/1/Processors";
inline constexpr const char* network_adapters_uri = "/redfish/v1/Chassis/1/NetworkAdapters";
inline constexpr const char* pcie_devices_uri = "/redfish/v1/Chassis/1/PCIeDevices";
inline constexpr const char* bmc_manager_uri = "/redfish/v1/Managers/1";

}  // namespace odata::redfish
