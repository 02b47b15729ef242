// The URIs of the BMC's manager resource and of what belongs to it.
#pragma once

namespace odata::redfish {

inline constexpr const char* managers_uri = "/redfish/v1/Managers";
inline constexpr const char* manager_uri = "/redfish/v1/Managers/1";
inline constexpr const char* manager_reset_target_uri =
    "/redfish/v1/Managers/1/Actions/Manager.Reset";
inline constexpr const char* manager_reset_actioninfo_uri =
    "/redfish/v1/Managers/1/ResetActionInfo";
inline constexpr const char* manager_network_protocol_uri =
    "/redfish/v1/Managers/1/NetworkProtocol";
inline constexpr const char* manager_ethernet_interfaces_uri =
    "/redfish/v1/Managers/1/EthernetInterfaces";
inline constexpr const char* manager_serial_interfaces_uri =
    "/redfish/v1/Managers/1/SerialInterfaces";
inline constexpr const char* manager_host_interfaces_uri = "/redfish/v1/Managers/1/HostInterfaces";
inline constexpr const char* manager_log_services_uri = "/redfish/v1/Managers/1/LogServices";
inline constexpr const char* manager_sel_uri = "/redfish/v1/Managers/1/LogServices/Log1";
inline constexpr const char* manager_virtual_media_uri = "/redfish/v1/Managers/1/VirtualMedia";
inline constexpr const char* manager_oem_uri = "/redfish/v1/Managers/1/Oem/Tarnwright";

}  // namespace odata::redfish
