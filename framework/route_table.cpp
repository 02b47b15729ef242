// The URI space of the service: every path the resolver answers, with the
// class it makes. Rows keep the order in which sibling segments are tried.
#include "framework/route_resolver.h"

namespace odata::redfish {

// Segment patterns used by more than one row.
#define STORAGE_ENCLOSURE_1                                                                \
    "(((NVMeSSD.)([0-9]+)(.Group.)([0-9]+)(.StorageBackplane))|((MRVL.HA-RAID.)([0-9]+)(." \
    "StorageModule))|((HA-RAID.|HBA.)([0-9]+)(.StorageEnclosure.)([0-9]+))|((StorageBackplane)))"
#define STORAGE_ENCLOSURE_2 "(HA-RAID.)([0-9]+)(.StorageEnclosure.)([0-9]+)"
#define STORAGE_ENCLOSURE_3                                                                \
    "(((NVMeSSD.)([0-9]+)(.Group.)([0-9]+)(.StorageBackplane))|((HA-RAID.|HBA.)([0-9]+)(." \
    "StorageEnclosure.)([0-9]+)))"
#define DISK_BAY "(Disk.Bay.)([0-9]+)"

#define FIRMWARE_INVENTORY_NAMED                                                        \
    "(BMC|Backup_BMC|Golden_BMC|Staging_BMC|BIOS|Backup_BIOS|Golden_BIOS|Staging_BIOS|" \
    "CPLD_Motherboard|Staging_CPLD_Motherboard|BIOS_ME|StagingPMem|LCMC_Backplane)"
#define FIRMWARE_INVENTORY_NUMBERED                                                     \
    "(Broadcom|Marvell|Staging_Broadcom|Staging_Marvell|NIC|StagingNIC|GPU|StagingGPU|" \
    "NVMeController|NVMeSSDA|NVMeSSDB|PowerSupply|PMem)([0-9]+)"
#define TWR_FIRMWARE_INVENTORY "/redfish/v1/UpdateService/Oem/Tarnwright/FirmwareInventory"
#define TWR_MRVL_CONTROLLER "(MRVL_HARAIDController.)([0-9]+)"
#define TWR_HARAID_CONTROLLER "(HARAIDController.)([0-9]+)"

#define POWER_CONSUMED_METRICS                                                             \
    "(AvgPowerConsumedHour|MinPowerConsumedHour|MaxPowerConsumedHour|AvgPowerConsumedDay|" \
    "MinPowerConsumedDay|MaxPowerConsumedDay|AvgPowerConsumedWeek|MinPowerConsumedWeek|"   \
    "MaxPowerConsumedWeek)"
#define POWER_CONSUMPTION_METRICS                                               \
    "(AvgPowerConsumptionHour|MinPowerConsumptionHour|MaxPowerConsumptionHour|" \
    "AvgPowerConsumptionDay|MinPowerConsumptionDay|MaxPowerConsumptionDay|"     \
    "AvgPowerConsumptionWeek|MinPowerConsumptionWeek|MaxPowerConsumptionWeek)"

#define DUMPS "/redfish/v1/Oem/Tarnwright/DumpService/Dumps"

#define STORAGE "/redfish/v1/Systems/1/Storage"
#define RAID_VOLUME \
    STORAGE "/(HA-RAID|MRVL.HA-RAID)/Volumes/(Controller.)([0-9]+)(.Volume.)([0-9]+)"
#define VROC_VOLUME STORAGE "/VROC/Volumes/(Controller.)([0-9]+)(.Volume.)([0-9]+)"
#define NUMBERED_VOLUME STORAGE "/(RAIDIntegrated|SATAEmbedded)/Volumes/([0-9]+)"

#define CRASHDUMP "/redfish/v1/Systems/1/LogServices/Crashdump"

const std::vector<route>& route_table() {
    static const std::vector<route> table = {
        // Top level
        {"/redfish", "redfish_ver"},
        {"/redfish/v1", "service_root"},
        {"/redfish/v1/odata", "servicedocument"},
        {"/redfish/v1/$metadata", "metadata"},
        {"/restapi", "restapi_ver"},
        {"/restapi/twri/Actions/File.Import", "common_fileoperation"},
        {"/restapi/twri/Actions/File.Export", "common_fileoperation"},
        {"/restapi/twri/Actions/BiosFile.Upload", "biosfile_upload"},
        {"/restapi/twri/Actions/BiosFile.Download", "biosfile_download"},

        // Chassis
        {"/redfish/v1/Chassis", "chassiscollection"},
        {"/redfish/v1/Chassis/1", "chassis"},
        {"/redfish/v1/Chassis/1/Thermal", "thermal"},
        {"/redfish/v1/Chassis/1/ThermalSubsystem", "thermalsubsystem"},
        {"/redfish/v1/Chassis/1/PowerSubsystem", "powersubsystem"},
        {"/redfish/v1/Chassis/1/EnvironmentMetrics", "environmentmetrics"},
        {"/redfish/v1/Chassis/1/Power", "power"},
        {"/redfish/v1/Chassis/1/NetworkAdapters", "networkadaptercollection"},
        {"/redfish/v1/Chassis/1/NetworkAdapters/([0-9]+)", "networkadapter"},
        {"/redfish/v1/Chassis/1/NetworkAdapters/([0-9]+)/NetworkDeviceFunctions",
         "networkdevicefunctcollection"},
        {"/redfish/v1/Chassis/1/NetworkAdapters/([0-9]+)/NetworkDeviceFunctions/([0-9]+)",
         "networkdevicefunction"},
        {"/redfish/v1/Chassis/1/NetworkAdapters/([0-9]+)/NetworkPorts", "networkportscollection"},
        {"/redfish/v1/Chassis/1/NetworkAdapters/([0-9]+)/NetworkPorts/([0-9]+)", "networkport"},
        {"/redfish/v1/Chassis/1/PCIeDevices", "pciedevicescollection"},
        {"/redfish/v1/Chassis/1/PCIeDevices/(NIC)([0-9]+)", "nic"},
        {"/redfish/v1/Chassis/1/PCIeDevices/(NIC)([0-9]+)/PCIeFunctions", "nicfunctioncollection"},
        {"/redfish/v1/Chassis/1/PCIeDevices/(NIC)([0-9]+)/PCIeFunctions/([0-9]+)", "nicfunc"},
        {"/redfish/v1/Chassis/1/PCIeDevices/(GPU)([0-9]+)", "gpu"},
        {"/redfish/v1/Chassis/1/PCIeDevices/(GPU)([0-9]+)/PCIeFunctions", "gpufunctioncollection"},
        {"/redfish/v1/Chassis/1/PCIeDevices/(GPU)([0-9]+)/PCIeFunctions/([0-9]+)", "gpufunc"},
        {"/redfish/v1/Chassis/1/PCIeDevices/(NVMeSSD)([0-9]+)", "nvmessd"},
        {"/redfish/v1/Chassis/1/PCIeDevices/(NVMeSSD)([0-9]+)/PCIeFunctions",
         "nvmessdfunctioncollection"},
        {"/redfish/v1/Chassis/1/PCIeDevices/(NVMeSSD)([0-9]+)/PCIeFunctions/([0-9]+)",
         "nvmessdfunc"},
        {"/redfish/v1/Chassis/1/PCIeDevices/(PCIeSSD)([0-9]+)", "pciessd"},
        {"/redfish/v1/Chassis/1/PCIeDevices/(PCIeSSD)([0-9]+)/PCIeFunctions",
         "pciessdfunctioncollection"},
        {"/redfish/v1/Chassis/1/PCIeDevices/(PCIeSSD)([0-9]+)/PCIeFunctions/([0-9]+)",
         "pciessdfunc"},
        {"/redfish/v1/Chassis/1/PCIeSlots", "pcieslots"},
        {"/redfish/v1/Chassis/1/Sensors", "sensorcollection"},
        {"/redfish/v1/Chassis/1/Sensors/([0-9]+)", "sensor"},

        // Chassis: storage enclosures. The first pattern covers the other
        // two; they are tried only when its subtree has no route.
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_1, "storagepod"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_1 "/Drives/" DISK_BAY, "diskdrive"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_1 "/Drives/" DISK_BAY
         "/Actions/Oem/TwrDrive.Indicate",
         "drive_indicate"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_1 "/Drives/" DISK_BAY
         "/Actions/Drive.SecureErase",
         "drive_secureerase"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_1 "/Drives/" DISK_BAY
         "/Actions/Oem/TwrDrive.SecureEraseAbort",
         "drive_secureeraseabort"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_1 "/Drives/" DISK_BAY "/IndicateActionInfo",
         "drivesactioninfo"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_2 "/Drives/" DISK_BAY, "diskdrive"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_2 "/Drives/" DISK_BAY
         "/Actions/Oem/TwrDrive.Indicate",
         "drive_indicate"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_2 "/Drives/" DISK_BAY
         "/Actions/Drive.SecureErase",
         "drive_secureerase"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_2 "/Drives/" DISK_BAY
         "/Actions/Oem/TwrDrive.SecureEraseAbort",
         "drive_secureeraseabort"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_2 "/Drives/" DISK_BAY "/IndicateActionInfo",
         "drivesactioninfo"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_3 "/Drives/" DISK_BAY, "diskdrive"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_3 "/Drives/" DISK_BAY
         "/Actions/Oem/TwrDrive.Indicate",
         "drive_indicate"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_3 "/Drives/" DISK_BAY
         "/Actions/Drive.SecureErase",
         "drive_secureerase"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_3 "/Drives/" DISK_BAY
         "/Actions/Oem/TwrDrive.SecureEraseAbort",
         "drive_secureeraseabort"},
        {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_3 "/Drives/" DISK_BAY "/IndicateActionInfo",
         "drivesactioninfo"},

        // Services: sessions and events
        {"/redfish/v1/SessionService", "sessionservice"},
        {"/redfish/v1/SessionService/Sessions", "sessionscollection"},
        {"/redfish/v1/SessionService/Sessions/([0-9]+)", "sessions"},
        {"/redfish/v1/EventService", "eventservice"},
        {"/redfish/v1/EventService/Subscriptions", "eventdestinationcollection"},
        {"/redfish/v1/EventService/Subscriptions/([0-9]+)", "eventdestination"},
        {"/redfish/v1/EventService/Actions/EventService.SubmitTestEvent",
         "eventservice_submittestevent"},
        {"/redfish/v1/EventService/SubmitTestEventActionInfo", "submittesteventactioninfo"},

        // Services: firmware update
        {"/redfish/v1/UpdateService", "updateservice"},
        {"/redfish/v1/UpdateService/FirmwareInventory", "firmwareinventorycollection"},
        {"/redfish/v1/UpdateService/FirmwareInventory/" FIRMWARE_INVENTORY_NAMED,
         "firmwareinventory"},
        {"/redfish/v1/UpdateService/FirmwareInventory/" FIRMWARE_INVENTORY_NUMBERED,
         "firmwareinventory"},
        {"/redfish/v1/UpdateService/upload", "upload"},
        {"/redfish/v1/UpdateService/SimpleUpdateActionInfo", "simpleupdateactioninfo"},
        {"/redfish/v1/UpdateService/Actions/UpdateService.SimpleUpdate",
         "updateservice_simpleupdate"},
        {"/redfish/v1/UpdateService/Actions/UpdateService.StartUpdate",
         "updateservice_startupdate"},
        {"/redfish/v1/UpdateService/Actions/Oem/TwrUpdateService.Install",
         "twrupdateservice_install"},
        {"/redfish/v1/UpdateService/InstallActionInfo", "installactioninfo"},
        {TWR_FIRMWARE_INVENTORY, "twrfirmwareinventorycollection"},
        {TWR_FIRMWARE_INVENTORY "/(BMC|BIOS)", "twrfirmwareinventory"},
        {TWR_FIRMWARE_INVENTORY "/((HARAIDController.)([0-9]+))|((MRVL_HARAIDController.)([0-9]+))",
         "twrfirmwareinventory"},
        {TWR_FIRMWARE_INVENTORY "/BMC/Actions/TwrFirmwareInventory.EnterUpdateMode",
         "twrfirmwareinventory_enterupdatemode"},
        {TWR_FIRMWARE_INVENTORY "/BMC/Actions/TwrFirmwareInventory.Update",
         "twrfirmwareinventory_update"},
        {TWR_FIRMWARE_INVENTORY "/BMC/Actions/TwrFirmwareInventory.Cancel",
         "twrfirmwareinventory_cancel"},
        {TWR_FIRMWARE_INVENTORY "/BMC/Actions/TwrFirmwareInventory.Upload",
         "twrfirmwareinventory_upload"},
        {TWR_FIRMWARE_INVENTORY "/BMC/UpdateActionInfo", "updateactioninfo"},
        {TWR_FIRMWARE_INVENTORY "/BIOS/Actions/TwrFirmwareInventory.EnterUpdateMode",
         "twrfirmwareinventory_enterupdatemode"},
        {TWR_FIRMWARE_INVENTORY "/BIOS/Actions/TwrFirmwareInventory.Update",
         "twrfirmwareinventory_update"},
        {TWR_FIRMWARE_INVENTORY "/BIOS/Actions/TwrFirmwareInventory.Cancel",
         "twrfirmwareinventory_cancel"},
        {TWR_FIRMWARE_INVENTORY "/BIOS/Actions/TwrFirmwareInventory.Upload",
         "twrfirmwareinventory_upload"},
        {TWR_FIRMWARE_INVENTORY "/BIOS/UpdateActionInfo", "updateactioninfo"},
        {TWR_FIRMWARE_INVENTORY "/" TWR_MRVL_CONTROLLER
                                "/Actions/TwrFirmwareInventory.EnterUpdateMode",
         "twrfirmwareinventory_enterupdatemode"},
        {TWR_FIRMWARE_INVENTORY "/" TWR_MRVL_CONTROLLER "/Actions/TwrFirmwareInventory.Update",
         "twrfirmwareinventory_update"},
        {TWR_FIRMWARE_INVENTORY "/" TWR_MRVL_CONTROLLER "/Actions/TwrFirmwareInventory.Cancel",
         "twrfirmwareinventory_cancel"},
        {TWR_FIRMWARE_INVENTORY "/" TWR_MRVL_CONTROLLER "/Actions/TwrFirmwareInventory.Upload",
         "twrfirmwareinventory_upload"},
        {TWR_FIRMWARE_INVENTORY "/" TWR_MRVL_CONTROLLER "/UpdateActionInfo", "updateactioninfo"},
        {TWR_FIRMWARE_INVENTORY "/" TWR_HARAID_CONTROLLER
                                "/Actions/TwrFirmwareInventory.EnterUpdateMode",
         "twrfirmwareinventory_enterupdatemode"},
        {TWR_FIRMWARE_INVENTORY "/" TWR_HARAID_CONTROLLER "/Actions/TwrFirmwareInventory.Update",
         "twrfirmwareinventory_update"},
        {TWR_FIRMWARE_INVENTORY "/" TWR_HARAID_CONTROLLER "/Actions/TwrFirmwareInventory.Cancel",
         "twrfirmwareinventory_cancel"},
        {TWR_FIRMWARE_INVENTORY "/" TWR_HARAID_CONTROLLER "/Actions/TwrFirmwareInventory.Upload",
         "twrfirmwareinventory_upload"},
        {TWR_FIRMWARE_INVENTORY "/" TWR_HARAID_CONTROLLER "/UpdateActionInfo", "updateactioninfo"},
        {"/redfish/v1/UpdateService/Oem/Tarnwright/SSLCert", "sslcert"},
        {"/redfish/v1/UpdateService/Oem/Tarnwright/SSLCert/Actions/TwrSSLCert.Upload",
         "sslcert_upload"},
        {"/redfish/v1/UpdateService/Oem/Tarnwright/IPMIConfig", "ipmiconfig"},
        {"/redfish/v1/UpdateService/Oem/Tarnwright/IPMIConfig/Actions/TwrIPMIConfig.Upload",
         "ipmiconfig_upload"},
        {"/redfish/v1/UpdateService/Oem/Tarnwright/IPMIConfig/Actions/TwrIPMIConfig.Download",
         "ipmiconfig_download"},

        // Services: tasks and certificates
        {"/redfish/v1/TaskService", "taskservice"},
        {"/redfish/v1/TaskService/Tasks", "taskcollection"},
        {"/redfish/v1/TaskService/Tasks/([0-9]+)", "task"},
        {"/redfish/v1/TaskService/Tasks/([0-9]+)/TaskMonitor", "taskmonitor"},
        // The monitor URI that task-starting actions hand out.
        {"/redfish/v1/TaskMonitor/(.+)", "taskmonitor"},
        {"/redfish/v1/CertificateService", "certificateservice"},
        {"/redfish/v1/CertificateService/CertificateLocations", "certificatelocations"},
        {"/redfish/v1/CertificateService/GenerateCSRActionInfo", "generate_csr_actioninfo"},
        {"/redfish/v1/CertificateService/ReplaceCertificateActionInfo",
         "replace_certificate_actioninfo"},
        {"/redfish/v1/CertificateService/Actions/CertificateService.GenerateCSR", "generate_csr"},
        {"/redfish/v1/CertificateService/Actions/CertificateService.ReplaceCertificate",
         "replace_certificate"},

        // Services: dumps
        {"/redfish/v1/Oem/Tarnwright/DumpService", "dumpservice"},
        {DUMPS, "dumpscollection"},
        {DUMPS "/HostCrashDump", "dump"},
        {DUMPS "/BMCEvidenceDump", "bmcevidencedump"},
        {DUMPS "/BIOSEvidenceDump", "biosevidencedump"},
        {DUMPS "/DriveSmartDump", "drivesmartdump"},
        {DUMPS "/HostCrashDump/Actions/TwrDump.Download", "dump_download"},
        {DUMPS "/BMCEvidenceDump/Actions/TwrBMCEvidenceDump.Generate", "bmcevidencedump_generate"},
        {DUMPS "/BMCEvidenceDump/Actions/TwrBMCEvidenceDump.Download", "bmcevidencedump_download"},
        {DUMPS "/BIOSEvidenceDump/Actions/TwrBIOSEvidenceDump.Generate",
         "biosevidencedump_generate"},
        {DUMPS "/BIOSEvidenceDump/Actions/TwrBIOSEvidenceDump.Download",
         "biosevidencedump_download"},
        {DUMPS "/DriveSmartDump/Actions/TwrDriveSmartDump.Generate", "drivesmart_generate"},
        {DUMPS "/DriveSmartDump/Actions/TwrDriveSmartDump.Download", "drivesmart_download"},
        {"/redfish/v1/Oem/Tarnwright/DumpService/CreateDumpActionInfo", "create_dump_actioninfo"},
        {"/redfish/v1/Oem/Tarnwright/DumpService/Actions/TwrDumpService.CreateDump",
         "dumpservice_createdump"},
        {"/redfish/v1/Oem/Tarnwright/DumpService/Actions/TwrDumpService.DeleteAll",
         "dumpservice_deleteall"},

        // Services: registries, schemas and telemetry
        {"/redfish/v1/Registries", "messageregistryfilecollection"},
        {"/redfish/v1/Registries/"
         "(Base.v1_10_3|BiosAttributeRegistry.v1_0_0|Event.v1_0_0|TWR.v1_0_0)",
         "messageregisteryfile"},
        {"/redfish/v1/JsonSchemas", "jsonschemafilecollection"},
        {"/redfish/v1/JsonSchemas/(.+)", "json_file_common"},
        {"/redfish/v1/TelemetryService", "telemetryservice"},
        {"/redfish/v1/TelemetryService/MetricDefinitions", "metricdefinitions"},
        {"/redfish/v1/TelemetryService/MetricDefinitions/" POWER_CONSUMED_METRICS, "powerconsumed"},
        {"/redfish/v1/TelemetryService/MetricReportDefinitions", "metricreportdefinitions"},
        {"/redfish/v1/TelemetryService/MetricReportDefinitions/" POWER_CONSUMPTION_METRICS,
         "defpowerconsumption"},
        {"/redfish/v1/TelemetryService/MetricReports", "metricreports"},
        {"/redfish/v1/TelemetryService/MetricReports/" POWER_CONSUMPTION_METRICS,
         "powerconsumption"},

        // Services: accounts and roles
        {"/redfish/v1/AccountService", "accountservice"},
        {"/redfish/v1/AccountService/Accounts", "manageraccountcollection"},
        {"/redfish/v1/AccountService/Accounts/([0-9]+)", "manageraccount"},
        {"/redfish/v1/AccountService/Roles", "rolecollection"},
        {"/redfish/v1/AccountService/Roles/(Administrator|Operator|ReadOnly|Custom)", "role"},

        // Managers
        {"/redfish/v1/Managers", "managercollection"},
        {"/redfish/v1/Managers/1", "manager"},
        {"/redfish/v1/Managers/1/Actions/Manager.Reset", "manager_reset"},
        {"/redfish/v1/Managers/1/Actions/Oem/TwrManagerConfig.Reset", "managerconfig_reset"},
        {"/redfish/v1/Managers/1/ResetActionInfo", "resetactioninfo"},
        {"/redfish/v1/Managers/1/NetworkProtocol", "networkprotocol"},
        {"/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates", "certificatecollection"},
        {"/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1", "certificate"},
        {"/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1/RekeyActionInfo",
         "rekeyactioninfo"},
        {"/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1/Actions/Certificate.Rekey",
         "certificate_rekey"},
        {"/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1/Actions/Certificate.Renew",
         "certificate_renew"},
        {"/redfish/v1/Managers/1/EthernetInterfaces", "managers_ethernetinterfacecollection"},
        {"/redfish/v1/Managers/1/EthernetInterfaces/ToHost", "common_ethernetinterface"},
        {"/redfish/v1/Managers/1/EthernetInterfaces/([0-9]+)", "common_ethernetinterface"},
        {"/redfish/v1/Managers/1/HostInterfaces", "managers_hostinterfacecollection"},
        {"/redfish/v1/Managers/1/HostInterfaces/1", "hostinterface"},
        {"/redfish/v1/Managers/1/HostInterfaces/1/HostEthernetInterfaces",
         "managers_hostinterfaces_hostethernetinterfacecollection"},
        {"/redfish/v1/Managers/1/SerialInterfaces", "serialInterfacecollection"},
        {"/redfish/v1/Managers/1/SerialInterfaces/([0-9]+)", "serialInterface"},
        {"/redfish/v1/Managers/1/LogServices", "managers_logservicecollection"},
        {"/redfish/v1/Managers/1/LogServices/Log1", "managers_logservices"},
        {"/redfish/v1/Managers/1/LogServices/Log1/Actions/LogService.ClearLog",
         "managers_logservice_clearlog"},
        {"/redfish/v1/Managers/1/LogServices/Log1/Entries", "managers_logentrycollection"},
        {"/redfish/v1/Managers/1/LogServices/Log1/Entries/([0-9]+)", "managers_logentry"},
        {"/redfish/v1/Managers/1/VirtualMedia", "virtualmediacollection"},
        {"/redfish/v1/Managers/1/VirtualMedia/(CD)([0-9]+)", "virtualmedia"},
        {"/redfish/v1/Managers/1/VirtualMedia/(CD)([0-9]+)/InsertMediaActionInfo",
         "insertmediaactioninfo"},
        {"/redfish/v1/Managers/1/VirtualMedia/(CD)([0-9]+)/Actions/VirtualMedia.InsertMedia",
         "virtualmedia_insertmedia"},
        {"/redfish/v1/Managers/1/VirtualMedia/(CD)([0-9]+)/Actions/VirtualMedia.EjectMedia",
         "virtualmedia_ejectmedia"},
        {"/redfish/v1/Managers/1/VirtualMedia/(Floppy)([0-9]+)", "virtualmedia"},
        {"/redfish/v1/Managers/1/VirtualMedia/(Floppy)([0-9]+)/InsertMediaActionInfo",
         "insertmediaactioninfo"},
        {"/redfish/v1/Managers/1/VirtualMedia/(Floppy)([0-9]+)/Actions/VirtualMedia.InsertMedia",
         "virtualmedia_insertmedia"},
        {"/redfish/v1/Managers/1/VirtualMedia/(Floppy)([0-9]+)/Actions/VirtualMedia.EjectMedia",
         "virtualmedia_ejectmedia"},
        {"/redfish/v1/Managers/1/Oem/Tarnwright/SmartPower", "smartpower"},
        {"/redfish/v1/Managers/1/Oem/Tarnwright/RADIUS", "radius"},
        {"/redfish/v1/Managers/1/Oem/Tarnwright/MouseMode", "mousemode"},
        {"/redfish/v1/Managers/1/Oem/Tarnwright/NTP", "ntp"},
        {"/redfish/v1/Managers/1/Oem/Tarnwright/IPAccessControl", "ipaccesscontrol"},
        {"/redfish/v1/Managers/1/Oem/Tarnwright/TWRRAKP", "rakp"},
        {"/redfish/v1/Managers/1/Oem/Tarnwright/Syslog", "syslog"},
        {"/redfish/v1/Managers/1/Oem/Tarnwright/Snooping", "snooping"},
        {"/redfish/v1/Managers/1/Oem/Tarnwright/FanMode", "fanmode"},
        {"/redfish/v1/Managers/1/Oem/Tarnwright/IKVM", "ikvm"},
        {"/redfish/v1/Managers/1/Oem/Tarnwright/KCSInterface", "kcsinterface"},
        {"/redfish/v1/Managers/1/Oem/Tarnwright/SysLockdown", "syslockdown"},
        {"/redfish/v1/Managers/1/Oem/Tarnwright/IPAccessControl/FilterRules",
         "filterrulecollection"},
        {"/redfish/v1/Managers/1/Oem/Tarnwright/IPAccessControl/FilterRules/([0-9]+)",
         "filterrule"},

        // Systems
        {"/redfish/v1/Systems", "systemcollection"},
        {"/redfish/v1/Systems/1", "system"},
        {"/redfish/v1/Systems/1/Actions/ComputerSystem.Reset", "computersystem_reset"},
        {"/redfish/v1/Systems/1/ResetActionInfo", "resetactioninfo"},
        {"/redfish/v1/Systems/1/Bios", "bios"},
        {"/redfish/v1/Systems/1/Bios/SD", "bios"},
        {"/redfish/v1/Systems/1/Bios/Actions/Bios.ResetBios", "bios_resetbios"},
        {"/redfish/v1/Systems/1/Bios/Actions/Bios.ChangePassword", "bios_changepassword"},
        {"/redfish/v1/Systems/1/Bios/ChangePasswordActionInfo", "changepasswordactioninfo"},
        {"/redfish/v1/Systems/1/SecureBoot", "secureboot"},
        {"/redfish/v1/Systems/1/SecureBoot/Actions/SecureBoot.ResetKeys", "secureboot_resetkeys"},
        {"/redfish/v1/Systems/1/SecureBoot/ResetKeysActionInfo", "secureboot_resetkeysactioninfo"},
        {"/redfish/v1/Systems/1/BootOptions", "bootoptionscollection"},
        {"/redfish/v1/Systems/1/BootOptions/(Boot)([0-9a-fA-F]+)", "bootoptions"},
        {"/redfish/v1/Systems/1/Processors", "processorcollection"},
        {"/redfish/v1/Systems/1/Processors/([0-9]+)", "processor"},
        {"/redfish/v1/Systems/1/Memory", "memorycollection"},
        {"/redfish/v1/Systems/1/Memory/([0-9]+)", "memory"},
        {"/redfish/v1/Systems/1/Memory/([0-9]+)/MemoryMetrics", "memorymetrics"},
        {"/redfish/v1/Systems/1/EthernetInterfaces", "systems_ethernetinterfacecollection"},
        {"/redfish/v1/Systems/1/EthernetInterfaces/ToManager", "ethernetinterface"},
        {"/redfish/v1/Systems/1/EthernetInterfaces/([0-9]+)", "ethernetinterface"},
        {"/redfish/v1/Systems/1/EthernetInterfaces/([0-9]+)/VLANs",
         "vlannetworkinterfacecollection"},
        {"/redfish/v1/Systems/1/EthernetInterfaces/([0-9]+)/VLANs/([0-9]+)",
         "vlannetworkinterface"},
        {"/redfish/v1/Systems/1/SimpleStorage", "simplestoragecollection"},
        {"/redfish/v1/Systems/1/SimpleStorage/([0-9]+)", "simplestorage"},

        // Systems: storage and volumes
        {STORAGE, "storagecollection"},
        {STORAGE "/(HBA|HA-RAID|HBA-IR|RAIDIntegrated|SATAEmbedded|NVMeSSD|MRVL.HA-RAID)",
         "storage"},
        {STORAGE "/(HA-RAID|RAIDIntegrated|SATAEmbedded|NVMeSSD|HBA-IR|MRVL.HA-RAID|HBA)/Volumes",
         "volumecollection"},
        {RAID_VOLUME, "volume"},
        {RAID_VOLUME "/Actions/Oem/TwrVolume.Indicate", "volume_indicate"},
        {RAID_VOLUME "/Actions/Oem/TwrVolume.Delete", "volume_delete"},
        {RAID_VOLUME "/Actions/Oem/TwrVolume.DeleteVD", "volume_deletevd"},
        {RAID_VOLUME "/Actions/Oem/TwrVolume.RebuildVD", "volume_rebuildvd"},
        {RAID_VOLUME "/Actions/Oem/TwrVolume.ImportVD", "volume_importvd"},
        {RAID_VOLUME "/Oem/Tarnwright/IndicateActionInfo", "volumeactioninfo"},
        {VROC_VOLUME, "volume"},
        {VROC_VOLUME "/Actions/Oem/TwrVolume.Indicate", "volume_indicate"},
        {VROC_VOLUME "/Actions/Oem/TwrVolume.Delete", "volume_delete"},
        {VROC_VOLUME "/Actions/Oem/TwrVolume.DeleteVD", "volume_deletevd"},
        {VROC_VOLUME "/Actions/Oem/TwrVolume.RebuildVD", "volume_rebuildvd"},
        {VROC_VOLUME "/Actions/Oem/TwrVolume.ImportVD", "volume_importvd"},
        {VROC_VOLUME "/Oem/Tarnwright/IndicateActionInfo", "volumeactioninfo"},
        {NUMBERED_VOLUME, "volume"},
        {NUMBERED_VOLUME "/Actions/Oem/TwrVolume.Indicate", "volume_indicate"},
        {NUMBERED_VOLUME "/Actions/Oem/TwrVolume.Delete", "volume_delete"},
        {NUMBERED_VOLUME "/Actions/Oem/TwrVolume.DeleteVD", "volume_deletevd"},
        {NUMBERED_VOLUME "/Actions/Oem/TwrVolume.RebuildVD", "volume_rebuildvd"},
        {NUMBERED_VOLUME "/Actions/Oem/TwrVolume.ImportVD", "volume_importvd"},
        {NUMBERED_VOLUME "/Oem/Tarnwright/IndicateActionInfo", "volumeactioninfo"},
        {STORAGE "/HA-RAID/Actions/Oem/TwrHARAIDController.Save", "haraidcontroller_save"},
        {STORAGE "/HA-RAID/Actions/Oem/TwrStorage.CreateVolume", "storage_createvolume"},
        {STORAGE "/HA-RAID/Actions/Oem/TwrStorage.ClearVolumes", "storage_clearvolumes"},
        {STORAGE
         "/HA-RAID/Oem/Tarnwright/(CreateVolumeActionInfo|SaveActionInfo|ClearVolumesActionInfo)",
         "haraidactioninfo"},
        {STORAGE "/MRVL.HA-RAID/Actions/Oem/TwrStorage.CreateVD", "storage_createvd"},
        {STORAGE "/MRVL.HA-RAID/Oem/Tarnwright/CreateVDActionInfo", "haraidactioninfo"},
        {STORAGE "/VROC/Oem/Tarnwright/"
                 "(CreateVolumeActionInfo|VolumeDeleteActionInfo|DriveUnmarkSpareActionInfo|"
                 "DriveMarkSpareActionInfo)",
         "volumeactioninfo"},

        // Systems: logs, network interfaces, metrics and OEM resources
        {"/redfish/v1/Systems/1/LogServices", "systems_logservicecollection"},
        {"/redfish/v1/Systems/1/LogServices/Log1", "systems_logservices"},
        {"/redfish/v1/Systems/1/LogServices/Log1/Actions/LogService.ClearLog",
         "systems_logservice_clearlog"},
        {"/redfish/v1/Systems/1/LogServices/Log1/Actions/Oem/TwrLogService.ClearAcknowledgements",
         "systems_logservice_clearack"},
        {"/redfish/v1/Systems/1/LogServices/Log1/Entries", "systems_logentrycollection"},
        {"/redfish/v1/Systems/1/LogServices/Log1/Entries/([0-9]+)", "systems_logentry"},
        {"/redfish/v1/Systems/1/NetworkInterfaces", "networkinterfacecollection"},
        {"/redfish/v1/Systems/1/NetworkInterfaces/([0-9]+)", "networkinterfaces"},
        {"/redfish/v1/Systems/1/NetworkInterfaces/([0-9]+)/NetworkDeviceFunctions",
         "sysnetworkdevicefunctcollection"},
        {"/redfish/v1/Systems/1/NetworkInterfaces/([0-9]+)/NetworkPorts",
         "sysnetworkportscollection"},
        {"/redfish/v1/Systems/1/ProcessorSummary/ProcessorMetrics", "processormetrics"},
        {"/redfish/v1/Systems/1/MemorySummary/MemoryMetrics", "memorysummarymetrics"},
        {"/redfish/v1/Systems/1/Oem/Tarnwright/NodeManager", "twrnodemanager"},
        {"/redfish/v1/Systems/1/Oem/Tarnwright/NodeManager/Actions/TwrNodeManager.ClearAllPolicies",
         "twrnodemanager_clearallpolicies"},
        {"/redfish/v1/Systems/1/Oem/Tarnwright/OOB", "oob_update_status"},
        {"/redfish/v1/Systems/1/Oem/Tarnwright/BmcInfo", "bmc_info"},

        // Systems: crash dumps, only while the host supports them
        {CRASHDUMP, "crashdump_logservice", true},
        {CRASHDUMP "/Actions/LogService.ClearLog", "crashdump_logservice_clearlog", true},
        {CRASHDUMP "/Actions/Oem/Crashdump.SendRawPeci", "peci_sendraw", true},
        {CRASHDUMP "/Actions/Oem/Crashdump.OnDemand", "crashdump_ondemand", true},
        {CRASHDUMP "/Actions/Oem/Crashdump.Telemetry", "crashdump_telemetry", true},
        {CRASHDUMP "/Entries", "crashdumpcollection", true},
        {CRASHDUMP "/Entries/OnDemand", "crashdump_logentry", true},
        {CRASHDUMP "/Entries/Telemetry", "crashdump_logentry", true},
    };
    return table;
}

}  // namespace odata::redfish

#undef STORAGE_ENCLOSURE_1
#undef STORAGE_ENCLOSURE_2
#undef STORAGE_ENCLOSURE_3
#undef DISK_BAY
#undef FIRMWARE_INVENTORY_NAMED
#undef FIRMWARE_INVENTORY_NUMBERED
#undef TWR_FIRMWARE_INVENTORY
#undef TWR_MRVL_CONTROLLER
#undef TWR_HARAID_CONTROLLER
#undef POWER_CONSUMED_METRICS
#undef POWER_CONSUMPTION_METRICS
#undef DUMPS
#undef STORAGE
#undef RAID_VOLUME
#undef VROC_VOLUME
#undef NUMBERED_VOLUME
#undef CRASHDUMP
