// The URIs of the manager's own settings under "Oem"/"Tarnwright".
#pragma once

namespace odata::redfish {

inline constexpr const char* manager_ntp_uri = "/redfish/v1/Managers/1/Oem/Tarnwright/NTP";
inline constexpr const char* manager_syslog_uri = "/redfish/v1/Managers/1/Oem/Tarnwright/Syslog";
inline constexpr const char* manager_ip_access_control_uri =
    "/redfish/v1/Managers/1/Oem/Tarnwright/IPAccessControl";
inline constexpr const char* manager_filter_rules_uri =
    "/redfish/v1/Managers/1/Oem/Tarnwright/IPAccessControl/FilterRules";
inline constexpr const char* manager_kcs_interface_uri =
    "/redfish/v1/Managers/1/Oem/Tarnwright/KCSInterface";
inline constexpr const char* manager_sys_lockdown_uri =
    "/redfish/v1/Managers/1/Oem/Tarnwright/SysLockdown";
#define MANAGER_OEM "/redfish/v1/Managers/1/Oem/Tarnwright"
inline constexpr const char* manager_smart_power_uri = MANAGER_OEM "/SmartPower";
inline constexpr const char* manager_radius_uri = MANAGER_OEM "/RADIUS";
inline constexpr const char* manager_mouse_mode_uri = MANAGER_OEM "/MouseMode";
inline constexpr const char* manager_rakp_uri = MANAGER_OEM "/TWRRAKP";
inline constexpr const char* manager_snooping_uri = MANAGER_OEM "/Snooping";
inline constexpr const char* manager_fan_mode_uri = MANAGER_OEM "/FanMode";
inline constexpr const char* manager_ikvm_uri = MANAGER_OEM "/IKVM";
#undef MANAGER_OEM
inline constexpr const char* manager_config_reset_uri =
    "/redfish/v1/Managers/1/Actions/Oem/TwrManagerConfig.Reset";

}  // namespace odata::redfish
