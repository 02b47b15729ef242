// The URIs of the computer system and of what belongs to it.
#pragma once

namespace odata::redfish {

inline constexpr const char* systems_uri = "/redfish/v1/Systems";
inline constexpr const char* system_uri = "/redfish/v1/Systems/1";
inline constexpr const char* system_reset_target_uri =
    "/redfish/v1/Systems/1/Actions/ComputerSystem.Reset";
inline constexpr const char* system_default_boot_order_target_uri =
    "/redfish/v1/Systems/1/Actions/ComputerSystem.SetDefaultBootOrder";
inline constexpr const char* system_reset_actioninfo_uri = "/redfish/v1/Systems/1/ResetActionInfo";
inline constexpr const char* processor_collection_uri = "/redfish/v1/Systems/1/Processors";
inline constexpr const char* memory_collection_uri = "/redfish/v1/Systems/1/Memory";
inline constexpr const char* host_ethernet_interfaces_uri =
    "/redfish/v1/Systems/1/EthernetInterfaces";
inline constexpr const char* bios_uri_of_system = "/redfish/v1/Systems/1/Bios";
inline constexpr const char* bios_reset_target_uri =
    "/redfish/v1/Systems/1/Bios/Actions/Bios.ResetBios";
inline constexpr const char* bios_change_password_target_uri =
    "/redfish/v1/Systems/1/Bios/Actions/Bios.ChangePassword";
inline constexpr const char* bios_change_password_actioninfo_uri =
    "/redfish/v1/Systems/1/Bios/ChangePasswordActionInfo";
inline constexpr const char* secure_boot_uri = "/redfish/v1/Systems/1/SecureBoot";
inline constexpr const char* secure_boot_reset_keys_target_uri =
    "/redfish/v1/Systems/1/SecureBoot/Actions/SecureBoot.ResetKeys";
inline constexpr const char* secure_boot_reset_keys_actioninfo_uri =
    "/redfish/v1/Systems/1/SecureBoot/ResetKeysActionInfo";
inline constexpr const char* bios_settings_uri = "/redfish/v1/Systems/1/Bios/SD";
inline constexpr const char* network_interfaces_uri = "/redfish/v1/Systems/1/NetworkInterfaces";
inline constexpr const char* simple_storage_uri = "/redfish/v1/Systems/1/SimpleStorage";
inline constexpr const char* storage_collection_uri = "/redfish/v1/Systems/1/Storage";
inline constexpr const char* system_log_services_uri = "/redfish/v1/Systems/1/LogServices";
inline constexpr const char* system_sel_uri = "/redfish/v1/Systems/1/LogServices/Log1";

}  // namespace odata::redfish
