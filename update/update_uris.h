// The URIs of the update service and its firmware inventories.
#pragma once

namespace odata::redfish {

inline constexpr const char* update_service_uri = "/redfish/v1/UpdateService";
inline constexpr const char* firmware_inventory_uri = "/redfish/v1/UpdateService/FirmwareInventory";
inline constexpr const char* simple_update_uri =
    "/redfish/v1/UpdateService/Actions/UpdateService.SimpleUpdate";
inline constexpr const char* simple_update_actioninfo_uri =
    "/redfish/v1/UpdateService/SimpleUpdateActionInfo";
inline constexpr const char* start_update_uri =
    "/redfish/v1/UpdateService/Actions/UpdateService.StartUpdate";
inline constexpr const char* install_uri =
    "/redfish/v1/UpdateService/Actions/Oem/TwrUpdateService.Install";
inline constexpr const char* install_actioninfo_uri = "/redfish/v1/UpdateService/InstallActionInfo";
inline constexpr const char* http_push_uri = "/redfish/v1/UpdateService/upload";
inline constexpr const char* twr_update_service_uri = "/redfish/v1/UpdateService/Oem/Tarnwright";
inline constexpr const char* twr_firmware_inventory_uri =
    "/redfish/v1/UpdateService/Oem/Tarnwright/FirmwareInventory";
inline constexpr const char* ssl_cert_uri = "/redfish/v1/UpdateService/Oem/Tarnwright/SSLCert";
inline constexpr const char* ssl_cert_upload_uri =
    "/redfish/v1/UpdateService/Oem/Tarnwright/SSLCert/Actions/TwrSSLCert.Upload";
inline constexpr const char* ipmi_config_uri =
    "/redfish/v1/UpdateService/Oem/Tarnwright/IPMIConfig";
inline constexpr const char* ipmi_config_upload_uri =
    "/redfish/v1/UpdateService/Oem/Tarnwright/IPMIConfig/Actions/TwrIPMIConfig.Upload";
inline constexpr const char* ipmi_config_download_uri =
    "/redfish/v1/UpdateService/Oem/Tarnwright/IPMIConfig/Actions/TwrIPMIConfig.Download";

inline constexpr const char* bmc_target_uri = "/redfish/v1/Managers/1";
inline constexpr const char* bios_target_uri = "/redfish/v1/Systems/1";

}  // namespace odata::redfish
