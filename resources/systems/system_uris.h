// The URIs of the computer system and of what belongs to it.
#pragma once

namespace odata::redfish {

inline constexpr const char* systems_uri = "/redfish/v1/Systems";
inline constexpr const char* system_uri = "/redfish/v1/Systems/1";
inline constexpr const char* system_reset_target_uri =
    "/redfish/v1/Systems/1/Actions/ComputerSystem.Reset";
inline constexpr const char* system_reset_actioninfo_uri = "/redfish/v1/Systems/1/ResetActionInfo";

}  // namespace odata::redfish
