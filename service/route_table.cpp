// The URI space of the service: every path the resolver answers, with the
// handler class it makes, the privilege each method needs and what else the
// pipeline must know of it. Rows keep the order in which sibling segments
// are tried.
#include "service/route_table.h"

#include "framework/metadata.h"
#include "framework/registry_file_resources.h"
#include "framework/schema_file_resources.h"
#include "framework/service_root.h"
#include "framework/servicedocument.h"
#include "framework/version_documents.h"
#include "resources/chassis/chassis.h"
#include "resources/chassis/chassis_subsystems.h"
#include "resources/chassis/chassiscollection.h"
#include "resources/chassis/drive_actions.h"
#include "resources/chassis/network_ports.h"
#include "resources/chassis/networkadapter.h"
#include "resources/chassis/networkadaptercollection.h"
#include "resources/chassis/pcie_device.h"
#include "resources/chassis/pciedevicescollection.h"
#include "resources/chassis/pcieslots.h"
#include "resources/chassis/power.h"
#include "resources/chassis/power_controls.h"
#include "resources/chassis/sata_backplane.h"
#include "resources/chassis/sensor.h"
#include "resources/chassis/sensorcollection.h"
#include "resources/chassis/storage_enclosures.h"
#include "resources/chassis/telemetry_resources.h"
#include "resources/chassis/thermal.h"
#include "resources/managers/certificate_rekey.h"
#include "resources/managers/certificate_resources.h"
#include "resources/managers/common_ethernetinterface.h"
#include "resources/managers/generate_csr.h"
#include "resources/managers/host_interfaces.h"
#include "resources/managers/ip_access_control.h"
#include "resources/managers/kcsinterface.h"
#include "resources/managers/log_entries.h"
#include "resources/managers/log_services.h"
#include "resources/managers/manager.h"
#include "resources/managers/manager_reset.h"
#include "resources/managers/managercollection.h"
#include "resources/managers/managerconfig_reset.h"
#include "resources/managers/managers_ethernetinterfacecollection.h"
#include "resources/managers/networkprotocol.h"
#include "resources/managers/ntp.h"
#include "resources/managers/oem_settings.h"
#include "resources/managers/replace_certificate.h"
#include "resources/managers/serial_interfaces.h"
#include "resources/managers/syslockdown.h"
#include "resources/managers/syslog.h"
#include "resources/managers/virtualmedia.h"
#include "resources/managers/virtualmedia_actions.h"
#include "resources/systems/bios.h"
#include "resources/systems/bios_changepassword.h"
#include "resources/systems/bios_resetbios.h"
#include "resources/systems/biosfile.h"
#include "resources/systems/bmc_info.h"
#include "resources/systems/bootoptions.h"
#include "resources/systems/bootoptionscollection.h"
#include "resources/systems/computersystem_reset.h"
#include "resources/systems/computersystem_setdefaultbootorder.h"
#include "resources/systems/crashdump.h"
#include "resources/systems/ethernetinterface.h"
#include "resources/systems/memory.h"
#include "resources/systems/memorycollection.h"
#include "resources/systems/memorymetrics.h"
#include "resources/systems/memorysummarymetrics.h"
#include "resources/systems/network_interface_members.h"
#include "resources/systems/networkinterfacecollection.h"
#include "resources/systems/networkinterfaces.h"
#include "resources/systems/oob_update_status.h"
#include "resources/systems/peci_sendraw.h"
#include "resources/systems/processor.h"
#include "resources/systems/processorcollection.h"
#include "resources/systems/processormetrics.h"
#include "resources/systems/raid_actioninfo.h"
#include "resources/systems/resetactioninfo.h"
#include "resources/systems/secureboot.h"
#include "resources/systems/secureboot_resetkeys.h"
#include "resources/systems/simplestorage.h"
#include "resources/systems/simplestoragecollection.h"
#include "resources/systems/storage.h"
#include "resources/systems/storage_actions.h"
#include "resources/systems/system.h"
#include "resources/systems/systemcollection.h"
#include "resources/systems/systems_ethernetinterfacecollection.h"
#include "resources/systems/twrnodemanager.h"
#include "resources/systems/vlannetworkinterface.h"
#include "resources/systems/volume.h"
#include "resources/systems/volume_actions.h"
#include "security/accountservice.h"
#include "security/manageraccount.h"
#include "security/manageraccountcollection.h"
#include "security/role_resources.h"
#include "security/session_resources.h"
#include "tasks/dump_resources.h"
#include "tasks/dumpservice.h"
#include "tasks/eventdestination.h"
#include "tasks/eventdestinationcollection.h"
#include "tasks/eventservice.h"
#include "tasks/eventservice_submittestevent.h"
#include "tasks/submittesteventactioninfo.h"
#include "tasks/task.h"
#include "tasks/taskcollection.h"
#include "tasks/taskmonitor.h"
#include "tasks/taskservice.h"
#include "update/common_fileoperation.h"
#include "update/firmwareinventory.h"
#include "update/installactioninfo.h"
#include "update/ipmiconfig.h"
#include "update/simpleupdateactioninfo.h"
#include "update/sslcert.h"
#include "update/twrfirmwareinventory_actions.h"
#include "update/twrupdateservice_install.h"
#include "update/updateactioninfo.h"
#include "update/updateservice.h"
#include "update/updateservice_simpleupdate.h"
#include "update/updateservice_startupdate.h"
#include "update/upload.h"

// A served row names its class as a type, so that a row of a class that
// does not exist fails to compile; its methods come from what the class
// overrides.
#define SERVED(handler) #handler, make_handler < handler>, served_methods < handler>()

namespace odata::redfish {
namespace {

constexpr method_requirement login = any_of({privilege_login});
constexpr method_requirement configure_manager = any_of({privilege_configure_manager});
constexpr method_requirement configure_users = any_of({privilege_configure_users});

// Reading needs Login; changing the BMC, its services and settings
// ConfigureManager.
constexpr route_privileges manager_resource = reads_and_changes(login, configure_manager);
// Reading needs Login; changing the host's components ConfigureComponents.
constexpr route_privileges component_resource =
    reads_and_changes(login, any_of({privilege_configure_components}));
// Changing the host's power also needs OemPowerControl.
constexpr route_privileges power_action = reads_and_changes(
    login, any_of({privilege_configure_components | privilege_oem_power_control}));
// Clearing a log also needs OemClearLog.
constexpr route_privileges manager_log_clearing =
    reads_and_changes(login, any_of({privilege_configure_manager | privilege_oem_clear_log}));
constexpr route_privileges system_log_clearing =
    reads_and_changes(login, any_of({privilege_configure_components | privilege_oem_clear_log}));
// The account service and its collection: changes need ConfigureUsers.
constexpr route_privileges user_settings = reads_and_changes(login, configure_users);
// An account: read by those who manage the BMC or its users, and by its
// owner, who may also change it (its password); only ConfigureUsers deletes.
constexpr route_privileges own_account = with_method(
    reads_and_changes(
        any_of({privilege_configure_manager, privilege_configure_users, privilege_configure_self}),
        any_of({privilege_configure_users, privilege_configure_self}), own_target::account),
    DELETE, configure_users);
// A session: read and ended by those who manage the BMC, and by its owner.
constexpr route_privileges own_session = reads_and_changes(
    any_of({privilege_configure_manager, privilege_configure_self}),
    any_of({privilege_configure_manager, privilege_configure_self}), own_target::session);
// The login authenticates itself.
constexpr route_privileges session_collection =
    with_method(manager_resource, POST, any_of({privilege_no_auth}));
// A subscription's destination and context are the subscriber's: reading
// one needs ConfigureManager, as changing it does.
constexpr route_privileges subscription = reads_and_changes(configure_manager, configure_manager);

}  // namespace

// Segment patterns used by more than one row.
#define STORAGE_ENCLOSURE_1                                                                \
    "(((NVMeSSD.)([0-9]+)(.Group.)([0-9]+)(.StorageBackplane))|((MRVL.HA-RAID.)([0-9]+)(." \
    "StorageModule))|((HA-RAID.|HBA.)([0-9]+)(.StorageEnclosure.)([0-9]+))|((StorageBackplane)))"
#define STORAGE_ENCLOSURE_2 "(HA-RAID.)([0-9]+)(.StorageEnclosure.)([0-9]+)"
#define STORAGE_ENCLOSURE_3                                                                \
    "(((NVMeSSD.)([0-9]+)(.Group.)([0-9]+)(.StorageBackplane))|((HA-RAID.|HBA.)([0-9]+)(." \
    "StorageEnclosure.)([0-9]+)))"
#define DISK_BAY "(Disk.Bay.)([0-9]+)"

#define FIRMWARE_INVENTORY_NAMED                                                         \
    "(BMC|Backup_BMC|Golden_BMC|Staging_BMC|BIOS|Backup_BIOS|Golden_BIOS|Staging_BIOS|"  \
    "CPLD_Motherboard|Staging_CPLD_Motherboard|CPLD_Backplane|CPLD_Backplane_0|BIOS_ME|" \
    "StagingPMem|LCMC|LCMC_Backplane)"
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

namespace {

constexpr route routes[] = {
    // Top level
    {"/redfish", SERVED(redfish_ver), manager_resource, route_open_read},
    {"/redfish/v1", SERVED(service_root), manager_resource, route_open_read | route_reusable},
    {"/redfish/v1/odata", SERVED(servicedocument), manager_resource, route_open_read},
    {"/redfish/v1/$metadata", SERVED(metadata), manager_resource, route_open_read},
    {"/restapi", SERVED(restapi_ver), manager_resource},
    {"/restapi/twri/Actions/File.Import", SERVED(common_fileoperation), manager_resource,
     route_refused_in_lockdown},
    {"/restapi/twri/Actions/File.Export", SERVED(common_fileoperation), manager_resource},
    {"/restapi/twri/Actions/BiosFile.Upload", SERVED(biosfile_upload), component_resource,
     route_upload},
    {"/restapi/twri/Actions/BiosFile.Download", SERVED(biosfile_download), component_resource},

    // Chassis
    {"/redfish/v1/Chassis", SERVED(chassiscollection), component_resource},
    {"/redfish/v1/Chassis/1", SERVED(chassis), component_resource},
    {"/redfish/v1/Chassis/1/Thermal", SERVED(thermal), component_resource, route_reusable},
    {"/redfish/v1/Chassis/1/ThermalSubsystem", SERVED(thermalsubsystem), component_resource},
    {"/redfish/v1/Chassis/1/PowerSubsystem", SERVED(powersubsystem), component_resource},
    {"/redfish/v1/Chassis/1/EnvironmentMetrics", SERVED(environmentmetrics), component_resource},
    {"/redfish/v1/Chassis/1/Power", SERVED(power), component_resource},
    {"/redfish/v1/Chassis/1/NetworkAdapters", SERVED(networkadaptercollection), component_resource},
    {"/redfish/v1/Chassis/1/NetworkAdapters/([0-9]+)", SERVED(networkadapter), component_resource},
    {"/redfish/v1/Chassis/1/NetworkAdapters/([0-9]+)/NetworkDeviceFunctions",
     SERVED(networkdevicefunctcollection), component_resource},
    {"/redfish/v1/Chassis/1/NetworkAdapters/([0-9]+)/NetworkDeviceFunctions/([0-9]+)",
     SERVED(networkdevicefunction), component_resource},
    {"/redfish/v1/Chassis/1/NetworkAdapters/([0-9]+)/NetworkPorts", SERVED(networkportscollection),
     component_resource},
    {"/redfish/v1/Chassis/1/NetworkAdapters/([0-9]+)/NetworkPorts/([0-9]+)", SERVED(networkport),
     component_resource},
    {"/redfish/v1/Chassis/1/PCIeDevices", SERVED(pciedevicescollection), component_resource},
    {"/redfish/v1/Chassis/1/PCIeDevices/(NIC)([0-9]+)", SERVED(nic), component_resource},
    {"/redfish/v1/Chassis/1/PCIeDevices/(NIC)([0-9]+)/PCIeFunctions", SERVED(nicfunctioncollection),
     component_resource},
    {"/redfish/v1/Chassis/1/PCIeDevices/(NIC)([0-9]+)/PCIeFunctions/([0-9]+)", SERVED(nicfunc),
     component_resource},
    {"/redfish/v1/Chassis/1/PCIeDevices/(GPU)([0-9]+)", SERVED(gpu), component_resource},
    {"/redfish/v1/Chassis/1/PCIeDevices/(GPU)([0-9]+)/PCIeFunctions", SERVED(gpufunctioncollection),
     component_resource},
    {"/redfish/v1/Chassis/1/PCIeDevices/(GPU)([0-9]+)/PCIeFunctions/([0-9]+)", SERVED(gpufunc),
     component_resource},
    {"/redfish/v1/Chassis/1/PCIeDevices/(NVMeSSD)([0-9]+)", SERVED(nvmessd), component_resource},
    {"/redfish/v1/Chassis/1/PCIeDevices/(NVMeSSD)([0-9]+)/PCIeFunctions",
     SERVED(nvmessdfunctioncollection), component_resource},
    {"/redfish/v1/Chassis/1/PCIeDevices/(NVMeSSD)([0-9]+)/PCIeFunctions/([0-9]+)",
     SERVED(nvmessdfunc), component_resource},
    {"/redfish/v1/Chassis/1/PCIeDevices/(PCIeSSD)([0-9]+)", SERVED(pciessd), component_resource},
    {"/redfish/v1/Chassis/1/PCIeDevices/(PCIeSSD)([0-9]+)/PCIeFunctions",
     SERVED(pciessdfunctioncollection), component_resource},
    {"/redfish/v1/Chassis/1/PCIeDevices/(PCIeSSD)([0-9]+)/PCIeFunctions/([0-9]+)",
     SERVED(pciessdfunc), component_resource},
    {"/redfish/v1/Chassis/1/PCIeSlots", SERVED(pcieslots), component_resource},
    {"/redfish/v1/Chassis/1/Controls", SERVED(controlcollection), component_resource},
    {"/redfish/v1/Chassis/1/Controls/PowerLimit", SERVED(powerlimitcontrol), component_resource},
    {"/redfish/v1/Chassis/1/Sensors", SERVED(sensorcollection), component_resource},
    {"/redfish/v1/Chassis/1/Sensors/([0-9]+)", SERVED(sensor), component_resource, route_reusable},

    // Chassis: storage enclosures. The first pattern covers the other
    // two; they are tried only when its subtree has no route.
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_1, SERVED(storagepod), component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_1 "/Drives/" DISK_BAY, SERVED(diskdrive),
     component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_1 "/Drives/" DISK_BAY
     "/Actions/Oem/TwrDrive.Indicate",
     SERVED(drive_indicate), component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_1 "/Drives/" DISK_BAY "/Actions/Drive.SecureErase",
     SERVED(drive_secureerase), component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_1 "/Drives/" DISK_BAY
     "/Actions/Oem/TwrDrive.SecureEraseAbort",
     SERVED(drive_secureeraseabort), component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_1 "/Drives/" DISK_BAY "/IndicateActionInfo",
     SERVED(drivesactioninfo), component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_2 "/Drives/" DISK_BAY, SERVED(diskdrive),
     component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_2 "/Drives/" DISK_BAY
     "/Actions/Oem/TwrDrive.Indicate",
     SERVED(drive_indicate), component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_2 "/Drives/" DISK_BAY "/Actions/Drive.SecureErase",
     SERVED(drive_secureerase), component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_2 "/Drives/" DISK_BAY
     "/Actions/Oem/TwrDrive.SecureEraseAbort",
     SERVED(drive_secureeraseabort), component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_2 "/Drives/" DISK_BAY "/IndicateActionInfo",
     SERVED(drivesactioninfo), component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_3 "/Drives/" DISK_BAY, SERVED(diskdrive),
     component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_3 "/Drives/" DISK_BAY
     "/Actions/Oem/TwrDrive.Indicate",
     SERVED(drive_indicate), component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_3 "/Drives/" DISK_BAY "/Actions/Drive.SecureErase",
     SERVED(drive_secureerase), component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_3 "/Drives/" DISK_BAY
     "/Actions/Oem/TwrDrive.SecureEraseAbort",
     SERVED(drive_secureeraseabort), component_resource},
    {"/redfish/v1/Chassis/" STORAGE_ENCLOSURE_3 "/Drives/" DISK_BAY "/IndicateActionInfo",
     SERVED(drivesactioninfo), component_resource},

    // Services: sessions and events
    {"/redfish/v1/SessionService", SERVED(sessionservice), manager_resource},
    {"/redfish/v1/SessionService/Sessions", SERVED(sessionscollection), session_collection},
    {"/redfish/v1/SessionService/Sessions/([0-9]+)", SERVED(sessions), own_session},
    {"/redfish/v1/EventService", SERVED(eventservice), manager_resource},
    {"/redfish/v1/EventService/Subscriptions", SERVED(eventdestinationcollection),
     manager_resource},
    {"/redfish/v1/EventService/Subscriptions/([0-9]+)", SERVED(eventdestination), subscription},
    {"/redfish/v1/EventService/Actions/EventService.SubmitTestEvent",
     SERVED(eventservice_submittestevent), manager_resource},
    {"/redfish/v1/EventService/SubmitTestEventActionInfo", SERVED(submittesteventactioninfo),
     manager_resource},

    // Services: firmware update
    {"/redfish/v1/UpdateService", SERVED(updateservice), manager_resource},
    {"/redfish/v1/UpdateService/FirmwareInventory", SERVED(firmwareinventorycollection),
     manager_resource},
    {"/redfish/v1/UpdateService/FirmwareInventory/" FIRMWARE_INVENTORY_NAMED,
     SERVED(firmwareinventory), manager_resource},
    {"/redfish/v1/UpdateService/FirmwareInventory/" FIRMWARE_INVENTORY_NUMBERED,
     SERVED(firmwareinventory), manager_resource},
    {"/redfish/v1/UpdateService/upload", SERVED(upload), manager_resource,
     route_upload | route_refused_in_lockdown},
    {"/redfish/v1/UpdateService/SimpleUpdateActionInfo", SERVED(simpleupdateactioninfo),
     manager_resource},
    {"/redfish/v1/UpdateService/Actions/UpdateService.SimpleUpdate",
     SERVED(updateservice_simpleupdate), manager_resource, route_refused_in_lockdown},
    {"/redfish/v1/UpdateService/Actions/UpdateService.StartUpdate",
     SERVED(updateservice_startupdate), manager_resource, route_refused_in_lockdown},
    {"/redfish/v1/UpdateService/Actions/Oem/TwrUpdateService.Install",
     SERVED(twrupdateservice_install), manager_resource, route_refused_in_lockdown},
    {"/redfish/v1/UpdateService/InstallActionInfo", SERVED(installactioninfo), manager_resource},
    {TWR_FIRMWARE_INVENTORY, SERVED(twrfirmwareinventorycollection), manager_resource},
    {TWR_FIRMWARE_INVENTORY "/(BMC|BIOS)", SERVED(twrfirmwareinventory), manager_resource},
    {TWR_FIRMWARE_INVENTORY "/((HARAIDController.)([0-9]+))|((MRVL_HARAIDController.)([0-9]+))",
     SERVED(twrfirmwareinventory), manager_resource},
    {TWR_FIRMWARE_INVENTORY "/BMC/Actions/TwrFirmwareInventory.EnterUpdateMode",
     SERVED(twrfirmwareinventory_enterupdatemode), manager_resource, route_refused_in_lockdown},
    {TWR_FIRMWARE_INVENTORY "/BMC/Actions/TwrFirmwareInventory.Update",
     SERVED(twrfirmwareinventory_update), manager_resource, route_refused_in_lockdown},
    {TWR_FIRMWARE_INVENTORY "/BMC/Actions/TwrFirmwareInventory.Cancel",
     SERVED(twrfirmwareinventory_cancel), manager_resource},
    {TWR_FIRMWARE_INVENTORY "/BMC/Actions/TwrFirmwareInventory.Upload",
     SERVED(twrfirmwareinventory_upload), manager_resource,
     route_upload | route_refused_in_lockdown},
    {TWR_FIRMWARE_INVENTORY "/BMC/UpdateActionInfo", SERVED(updateactioninfo), manager_resource},
    {TWR_FIRMWARE_INVENTORY "/BIOS/Actions/TwrFirmwareInventory.EnterUpdateMode",
     SERVED(twrfirmwareinventory_enterupdatemode), manager_resource, route_refused_in_lockdown},
    {TWR_FIRMWARE_INVENTORY "/BIOS/Actions/TwrFirmwareInventory.Update",
     SERVED(twrfirmwareinventory_update), manager_resource, route_refused_in_lockdown},
    {TWR_FIRMWARE_INVENTORY "/BIOS/Actions/TwrFirmwareInventory.Cancel",
     SERVED(twrfirmwareinventory_cancel), manager_resource},
    {TWR_FIRMWARE_INVENTORY "/BIOS/Actions/TwrFirmwareInventory.Upload",
     SERVED(twrfirmwareinventory_upload), manager_resource,
     route_upload | route_refused_in_lockdown},
    {TWR_FIRMWARE_INVENTORY "/BIOS/UpdateActionInfo", SERVED(updateactioninfo), manager_resource},
    {TWR_FIRMWARE_INVENTORY "/" TWR_MRVL_CONTROLLER "/Actions/TwrFirmwareInventory.EnterUpdateMode",
     SERVED(twrfirmwareinventory_enterupdatemode), manager_resource, route_refused_in_lockdown},
    {TWR_FIRMWARE_INVENTORY "/" TWR_MRVL_CONTROLLER "/Actions/TwrFirmwareInventory.Update",
     SERVED(twrfirmwareinventory_update), manager_resource, route_refused_in_lockdown},
    {TWR_FIRMWARE_INVENTORY "/" TWR_MRVL_CONTROLLER "/Actions/TwrFirmwareInventory.Cancel",
     SERVED(twrfirmwareinventory_cancel), manager_resource},
    {TWR_FIRMWARE_INVENTORY "/" TWR_MRVL_CONTROLLER "/Actions/TwrFirmwareInventory.Upload",
     SERVED(twrfirmwareinventory_upload), manager_resource,
     route_upload | route_refused_in_lockdown},
    {TWR_FIRMWARE_INVENTORY "/" TWR_MRVL_CONTROLLER "/UpdateActionInfo", SERVED(updateactioninfo),
     manager_resource},
    {TWR_FIRMWARE_INVENTORY "/" TWR_HARAID_CONTROLLER
                            "/Actions/TwrFirmwareInventory.EnterUpdateMode",
     SERVED(twrfirmwareinventory_enterupdatemode), manager_resource, route_refused_in_lockdown},
    {TWR_FIRMWARE_INVENTORY "/" TWR_HARAID_CONTROLLER "/Actions/TwrFirmwareInventory.Update",
     SERVED(twrfirmwareinventory_update), manager_resource, route_refused_in_lockdown},
    {TWR_FIRMWARE_INVENTORY "/" TWR_HARAID_CONTROLLER "/Actions/TwrFirmwareInventory.Cancel",
     SERVED(twrfirmwareinventory_cancel), manager_resource},
    {TWR_FIRMWARE_INVENTORY "/" TWR_HARAID_CONTROLLER "/Actions/TwrFirmwareInventory.Upload",
     SERVED(twrfirmwareinventory_upload), manager_resource,
     route_upload | route_refused_in_lockdown},
    {TWR_FIRMWARE_INVENTORY "/" TWR_HARAID_CONTROLLER "/UpdateActionInfo", SERVED(updateactioninfo),
     manager_resource},
    {"/redfish/v1/UpdateService/Oem/Tarnwright/SSLCert", SERVED(sslcert), manager_resource},
    {"/redfish/v1/UpdateService/Oem/Tarnwright/SSLCert/Actions/TwrSSLCert.Upload",
     SERVED(sslcert_upload), manager_resource, route_upload | route_refused_in_lockdown},
    {"/redfish/v1/UpdateService/Oem/Tarnwright/IPMIConfig", SERVED(ipmiconfig), manager_resource},
    {"/redfish/v1/UpdateService/Oem/Tarnwright/IPMIConfig/Actions/TwrIPMIConfig.Upload",
     SERVED(ipmiconfig_upload), manager_resource, route_upload | route_refused_in_lockdown},
    {"/redfish/v1/UpdateService/Oem/Tarnwright/IPMIConfig/Actions/TwrIPMIConfig.Download",
     SERVED(ipmiconfig_download), manager_resource},

    // Services: tasks and certificates
    {"/redfish/v1/TaskService", SERVED(taskservice), manager_resource},
    {"/redfish/v1/TaskService/Tasks", SERVED(taskcollection), manager_resource},
    {"/redfish/v1/TaskService/Tasks/([0-9]+)", SERVED(task), manager_resource},
    {"/redfish/v1/TaskService/Tasks/([0-9]+)/TaskMonitor", SERVED(taskmonitor), manager_resource},
    // The monitor URI that task-starting actions hand out.
    {"/redfish/v1/TaskMonitor/(.+)", SERVED(taskmonitor), manager_resource},
    {"/redfish/v1/CertificateService", SERVED(certificateservice), manager_resource},
    {"/redfish/v1/CertificateService/CertificateLocations", SERVED(certificatelocations),
     manager_resource},
    {"/redfish/v1/CertificateService/GenerateCSRActionInfo", SERVED(generate_csr_actioninfo),
     manager_resource},
    {"/redfish/v1/CertificateService/ReplaceCertificateActionInfo",
     SERVED(replace_certificate_actioninfo), manager_resource},
    {"/redfish/v1/CertificateService/Actions/CertificateService.GenerateCSR", SERVED(generate_csr),
     manager_resource},
    {"/redfish/v1/CertificateService/Actions/CertificateService.ReplaceCertificate",
     SERVED(replace_certificate), manager_resource, route_refused_in_lockdown},

    // Services: dumps
    {"/redfish/v1/Oem/Tarnwright/DumpService", SERVED(dumpservice), manager_resource},
    {DUMPS, SERVED(dumpscollection), manager_resource},
    {DUMPS "/HostCrashDump", SERVED(dump), manager_resource},
    {DUMPS "/BMCEvidenceDump", SERVED(bmcevidencedump), manager_resource},
    {DUMPS "/BIOSEvidenceDump", SERVED(biosevidencedump), manager_resource},
    {DUMPS "/DriveSmartDump", SERVED(drivesmartdump), manager_resource},
    {DUMPS "/HostCrashDump/Actions/TwrDump.Download", SERVED(dump_download), manager_resource},
    {DUMPS "/BMCEvidenceDump/Actions/TwrBMCEvidenceDump.Generate", SERVED(bmcevidencedump_generate),
     manager_resource},
    {DUMPS "/BMCEvidenceDump/Actions/TwrBMCEvidenceDump.Download", SERVED(bmcevidencedump_download),
     manager_resource},
    {DUMPS "/BIOSEvidenceDump/Actions/TwrBIOSEvidenceDump.Generate",
     SERVED(biosevidencedump_generate), manager_resource},
    {DUMPS "/BIOSEvidenceDump/Actions/TwrBIOSEvidenceDump.Download",
     SERVED(biosevidencedump_download), manager_resource},
    {DUMPS "/DriveSmartDump/Actions/TwrDriveSmartDump.Generate", SERVED(drivesmart_generate),
     manager_resource},
    {DUMPS "/DriveSmartDump/Actions/TwrDriveSmartDump.Download", SERVED(drivesmart_download),
     manager_resource},
    {"/redfish/v1/Oem/Tarnwright/DumpService/CreateDumpActionInfo", SERVED(create_dump_actioninfo),
     manager_resource},
    {"/redfish/v1/Oem/Tarnwright/DumpService/Actions/TwrDumpService.CreateDump",
     SERVED(dumpservice_createdump), manager_resource},
    {"/redfish/v1/Oem/Tarnwright/DumpService/Actions/TwrDumpService.DeleteAll",
     SERVED(dumpservice_deleteall), manager_resource},

    // Services: registries, schemas and telemetry
    {"/redfish/v1/Registries", SERVED(messageregistryfilecollection), manager_resource},
    {"/redfish/v1/Registries/"
     "(Base.v1_10_3|BiosAttributeRegistry.v1_0_0|Event.v1_0_0|TWR.v1_0_0)",
     SERVED(messageregisteryfile), manager_resource},
    {"/redfish/v1/JsonSchemas", SERVED(jsonschemafilecollection), manager_resource},
    {"/redfish/v1/JsonSchemas/(.+)", SERVED(json_file_common), manager_resource},
    {"/redfish/v1/TelemetryService", SERVED(telemetryservice), manager_resource},
    {"/redfish/v1/TelemetryService/MetricDefinitions", SERVED(metricdefinitions), manager_resource},
    {"/redfish/v1/TelemetryService/MetricDefinitions/" POWER_CONSUMED_METRICS,
     SERVED(powerconsumed), manager_resource},
    {"/redfish/v1/TelemetryService/MetricReportDefinitions", SERVED(metricreportdefinitions),
     manager_resource},
    {"/redfish/v1/TelemetryService/MetricReportDefinitions/" POWER_CONSUMPTION_METRICS,
     SERVED(defpowerconsumption), manager_resource},
    {"/redfish/v1/TelemetryService/MetricReports", SERVED(metricreports), manager_resource},
    {"/redfish/v1/TelemetryService/MetricReports/" POWER_CONSUMPTION_METRICS,
     SERVED(powerconsumption), manager_resource},

    // Services: accounts and roles
    {"/redfish/v1/AccountService", SERVED(accountservice), user_settings},
    {"/redfish/v1/AccountService/Accounts", SERVED(manageraccountcollection), user_settings,
     route_reusable},
    {"/redfish/v1/AccountService/Accounts/([0-9]+)", SERVED(manageraccount), own_account},
    {"/redfish/v1/AccountService/Roles", SERVED(rolecollection), manager_resource},
    {"/redfish/v1/AccountService/Roles/(Administrator|Operator|ReadOnly|Custom)", SERVED(role),
     manager_resource},

    // Managers
    {"/redfish/v1/Managers", SERVED(managercollection), manager_resource},
    {"/redfish/v1/Managers/1", SERVED(manager), manager_resource},
    {"/redfish/v1/Managers/1/Actions/Manager.Reset", SERVED(manager_reset), manager_resource},
    {"/redfish/v1/Managers/1/Actions/Oem/TwrManagerConfig.Reset", SERVED(managerconfig_reset),
     manager_resource, route_refused_in_lockdown},
    {"/redfish/v1/Managers/1/ResetActionInfo", SERVED(resetactioninfo), manager_resource},
    {"/redfish/v1/Managers/1/NetworkProtocol", SERVED(networkprotocol), manager_resource},
    {"/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates", SERVED(certificatecollection),
     manager_resource},
    {"/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1", SERVED(certificate),
     manager_resource},
    {"/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1/RekeyActionInfo",
     SERVED(rekeyactioninfo), manager_resource},
    {"/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1/Actions/Certificate.Rekey",
     SERVED(certificate_rekey), manager_resource, route_refused_in_lockdown},
    {"/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1/Actions/Certificate.Renew",
     SERVED(certificate_renew), manager_resource, route_refused_in_lockdown},
    {"/redfish/v1/Managers/1/EthernetInterfaces", SERVED(managers_ethernetinterfacecollection),
     manager_resource},
    {"/redfish/v1/Managers/1/EthernetInterfaces/ToHost", SERVED(common_ethernetinterface),
     manager_resource},
    {"/redfish/v1/Managers/1/EthernetInterfaces/([0-9]+)", SERVED(common_ethernetinterface),
     manager_resource},
    {"/redfish/v1/Managers/1/HostInterfaces", SERVED(managers_hostinterfacecollection),
     manager_resource},
    {"/redfish/v1/Managers/1/HostInterfaces/1", SERVED(hostinterface), manager_resource},
    {"/redfish/v1/Managers/1/HostInterfaces/1/HostEthernetInterfaces",
     SERVED(managers_hostinterfaces_hostethernetinterfacecollection), manager_resource},
    {"/redfish/v1/Managers/1/HostInterfaces/1/HostEthernetInterfaces/([0-9]+)",
     SERVED(hostethernetinterface), manager_resource},
    {"/redfish/v1/Managers/1/SerialInterfaces", SERVED(serialInterfacecollection),
     manager_resource},
    {"/redfish/v1/Managers/1/SerialInterfaces/([0-9]+)", SERVED(serialInterface), manager_resource},
    {"/redfish/v1/Managers/1/LogServices", SERVED(managers_logservicecollection), manager_resource},
    {"/redfish/v1/Managers/1/LogServices/Log1", SERVED(managers_logservices), manager_resource},
    {"/redfish/v1/Managers/1/LogServices/Log1/Actions/LogService.ClearLog",
     SERVED(managers_logservice_clearlog), manager_log_clearing},
    {"/redfish/v1/Managers/1/LogServices/Log1/Entries", SERVED(managers_logentrycollection),
     manager_resource},
    {"/redfish/v1/Managers/1/LogServices/Log1/Entries/([0-9]+)", SERVED(managers_logentry),
     manager_resource},
    {"/redfish/v1/Managers/1/VirtualMedia", SERVED(virtualmediacollection), manager_resource},
    {"/redfish/v1/Managers/1/VirtualMedia/(CD)([0-9]+)", SERVED(virtualmedia), manager_resource},
    {"/redfish/v1/Managers/1/VirtualMedia/(CD)([0-9]+)/InsertMediaActionInfo",
     SERVED(insertmediaactioninfo), manager_resource},
    {"/redfish/v1/Managers/1/VirtualMedia/(CD)([0-9]+)/Actions/VirtualMedia.InsertMedia",
     SERVED(virtualmedia_insertmedia), manager_resource},
    {"/redfish/v1/Managers/1/VirtualMedia/(CD)([0-9]+)/Actions/VirtualMedia.EjectMedia",
     SERVED(virtualmedia_ejectmedia), manager_resource},
    {"/redfish/v1/Managers/1/VirtualMedia/(Floppy)([0-9]+)", SERVED(virtualmedia),
     manager_resource},
    {"/redfish/v1/Managers/1/VirtualMedia/(Floppy)([0-9]+)/InsertMediaActionInfo",
     SERVED(insertmediaactioninfo), manager_resource},
    {"/redfish/v1/Managers/1/VirtualMedia/(Floppy)([0-9]+)/Actions/VirtualMedia.InsertMedia",
     SERVED(virtualmedia_insertmedia), manager_resource},
    {"/redfish/v1/Managers/1/VirtualMedia/(Floppy)([0-9]+)/Actions/VirtualMedia.EjectMedia",
     SERVED(virtualmedia_ejectmedia), manager_resource},
    {"/redfish/v1/Managers/1/Oem/Tarnwright/SmartPower", SERVED(smartpower), manager_resource},
    {"/redfish/v1/Managers/1/Oem/Tarnwright/RADIUS", SERVED(radius), manager_resource},
    {"/redfish/v1/Managers/1/Oem/Tarnwright/MouseMode", SERVED(mousemode), manager_resource},
    {"/redfish/v1/Managers/1/Oem/Tarnwright/NTP", SERVED(ntp), manager_resource,
     route_refused_in_lockdown},
    {"/redfish/v1/Managers/1/Oem/Tarnwright/IPAccessControl", SERVED(ipaccesscontrol),
     manager_resource, route_refused_in_lockdown},
    {"/redfish/v1/Managers/1/Oem/Tarnwright/TWRRAKP", SERVED(rakp), manager_resource},
    {"/redfish/v1/Managers/1/Oem/Tarnwright/Syslog", SERVED(syslog), manager_resource,
     route_refused_in_lockdown},
    {"/redfish/v1/Managers/1/Oem/Tarnwright/Snooping", SERVED(snooping), manager_resource},
    {"/redfish/v1/Managers/1/Oem/Tarnwright/FanMode", SERVED(fanmode), manager_resource},
    {"/redfish/v1/Managers/1/Oem/Tarnwright/IKVM", SERVED(ikvm), manager_resource},
    {"/redfish/v1/Managers/1/Oem/Tarnwright/KCSInterface", SERVED(kcsinterface), manager_resource,
     route_refused_in_lockdown},
    {"/redfish/v1/Managers/1/Oem/Tarnwright/SysLockdown", SERVED(syslockdown), manager_resource},
    {"/redfish/v1/Managers/1/Oem/Tarnwright/IPAccessControl/FilterRules",
     SERVED(filterrulecollection), manager_resource, route_refused_in_lockdown},
    {"/redfish/v1/Managers/1/Oem/Tarnwright/IPAccessControl/FilterRules/([0-9]+)",
     SERVED(filterrule), manager_resource, route_refused_in_lockdown},

    // Systems
    {"/redfish/v1/Systems", SERVED(systemcollection), component_resource},
    {"/redfish/v1/Systems/1", SERVED(system), component_resource, route_reusable},
    {"/redfish/v1/Systems/1/Actions/ComputerSystem.Reset", SERVED(computersystem_reset),
     power_action},
    {"/redfish/v1/Systems/1/Actions/ComputerSystem.SetDefaultBootOrder",
     SERVED(computersystem_setdefaultbootorder), component_resource},
    {"/redfish/v1/Systems/1/ResetActionInfo", SERVED(resetactioninfo), component_resource},
    {"/redfish/v1/Systems/1/Bios", SERVED(bios), component_resource},
    {"/redfish/v1/Systems/1/Bios/SD", SERVED(bios), component_resource},
    {"/redfish/v1/Systems/1/Bios/Actions/Bios.ResetBios", SERVED(bios_resetbios),
     component_resource},
    {"/redfish/v1/Systems/1/Bios/Actions/Bios.ChangePassword", SERVED(bios_changepassword),
     component_resource},
    {"/redfish/v1/Systems/1/Bios/ChangePasswordActionInfo", SERVED(changepasswordactioninfo),
     component_resource},
    {"/redfish/v1/Systems/1/SecureBoot", SERVED(secureboot), component_resource},
    {"/redfish/v1/Systems/1/SecureBoot/Actions/SecureBoot.ResetKeys", SERVED(secureboot_resetkeys),
     component_resource},
    {"/redfish/v1/Systems/1/SecureBoot/ResetKeysActionInfo", SERVED(secureboot_resetkeysactioninfo),
     component_resource},
    {"/redfish/v1/Systems/1/BootOptions", SERVED(bootoptionscollection), component_resource},
    {"/redfish/v1/Systems/1/BootOptions/(Boot)([0-9a-fA-F]+)", SERVED(bootoptions),
     component_resource},
    {"/redfish/v1/Systems/1/Processors", SERVED(processorcollection), component_resource},
    {"/redfish/v1/Systems/1/Processors/([0-9]+)", SERVED(processor), component_resource},
    {"/redfish/v1/Systems/1/Memory", SERVED(memorycollection), component_resource},
    {"/redfish/v1/Systems/1/Memory/([0-9]+)", SERVED(memory), component_resource},
    {"/redfish/v1/Systems/1/Memory/([0-9]+)/MemoryMetrics", SERVED(memorymetrics),
     component_resource},
    {"/redfish/v1/Systems/1/EthernetInterfaces", SERVED(systems_ethernetinterfacecollection),
     component_resource},
    {"/redfish/v1/Systems/1/EthernetInterfaces/ToManager", SERVED(ethernetinterface),
     component_resource},
    {"/redfish/v1/Systems/1/EthernetInterfaces/([0-9]+)", SERVED(ethernetinterface),
     component_resource},
    {"/redfish/v1/Systems/1/EthernetInterfaces/([0-9]+)/VLANs",
     SERVED(vlannetworkinterfacecollection), component_resource},
    {"/redfish/v1/Systems/1/EthernetInterfaces/([0-9]+)/VLANs/([0-9]+)",
     SERVED(vlannetworkinterface), component_resource},
    {"/redfish/v1/Systems/1/SimpleStorage", SERVED(simplestoragecollection), component_resource},
    {"/redfish/v1/Systems/1/SimpleStorage/([0-9]+)", SERVED(simplestorage), component_resource},

    // Systems: storage and volumes
    {STORAGE, SERVED(storagecollection), component_resource},
    {STORAGE "/(HBA|HA-RAID|HBA-IR|RAIDIntegrated|SATAEmbedded|NVMeSSD|MRVL.HA-RAID)",
     SERVED(storage), component_resource},
    {STORAGE "/(HA-RAID|RAIDIntegrated|SATAEmbedded|NVMeSSD|HBA-IR|MRVL.HA-RAID|HBA)/Volumes",
     SERVED(volumecollection), component_resource},
    {RAID_VOLUME, SERVED(volume), component_resource},
    {RAID_VOLUME "/Actions/Oem/TwrVolume.Indicate", SERVED(volume_indicate), component_resource},
    {RAID_VOLUME "/Actions/Oem/TwrVolume.Delete", SERVED(volume_delete), component_resource},
    {RAID_VOLUME "/Actions/Oem/TwrVolume.DeleteVD", SERVED(volume_deletevd), component_resource},
    {RAID_VOLUME "/Actions/Oem/TwrVolume.RebuildVD", SERVED(volume_rebuildvd), component_resource},
    {RAID_VOLUME "/Actions/Oem/TwrVolume.ImportVD", SERVED(volume_importvd), component_resource},
    {RAID_VOLUME "/Oem/Tarnwright/IndicateActionInfo", SERVED(volumeactioninfo),
     component_resource},
    {VROC_VOLUME, SERVED(volume), component_resource},
    {VROC_VOLUME "/Actions/Oem/TwrVolume.Indicate", SERVED(volume_indicate), component_resource},
    {VROC_VOLUME "/Actions/Oem/TwrVolume.Delete", SERVED(volume_delete), component_resource},
    {VROC_VOLUME "/Actions/Oem/TwrVolume.DeleteVD", SERVED(volume_deletevd), component_resource},
    {VROC_VOLUME "/Actions/Oem/TwrVolume.RebuildVD", SERVED(volume_rebuildvd), component_resource},
    {VROC_VOLUME "/Actions/Oem/TwrVolume.ImportVD", SERVED(volume_importvd), component_resource},
    {VROC_VOLUME "/Oem/Tarnwright/IndicateActionInfo", SERVED(volumeactioninfo),
     component_resource},
    {NUMBERED_VOLUME, SERVED(volume), component_resource},
    {NUMBERED_VOLUME "/Actions/Oem/TwrVolume.Indicate", SERVED(volume_indicate),
     component_resource},
    {NUMBERED_VOLUME "/Actions/Oem/TwrVolume.Delete", SERVED(volume_delete), component_resource},
    {NUMBERED_VOLUME "/Actions/Oem/TwrVolume.DeleteVD", SERVED(volume_deletevd),
     component_resource},
    {NUMBERED_VOLUME "/Actions/Oem/TwrVolume.RebuildVD", SERVED(volume_rebuildvd),
     component_resource},
    {NUMBERED_VOLUME "/Actions/Oem/TwrVolume.ImportVD", SERVED(volume_importvd),
     component_resource},
    {NUMBERED_VOLUME "/Oem/Tarnwright/IndicateActionInfo", SERVED(volumeactioninfo),
     component_resource},
    {STORAGE "/HA-RAID/Actions/Oem/TwrHARAIDController.Save", SERVED(haraidcontroller_save),
     component_resource},
    {STORAGE "/HA-RAID/Actions/Oem/TwrStorage.CreateVolume", SERVED(storage_createvolume),
     component_resource},
    {STORAGE "/HA-RAID/Actions/Oem/TwrStorage.ClearVolumes", SERVED(storage_clearvolumes),
     component_resource},
    {STORAGE
     "/HA-RAID/Oem/Tarnwright/(CreateVolumeActionInfo|SaveActionInfo|ClearVolumesActionInfo)",
     SERVED(haraidactioninfo), component_resource},
    {STORAGE "/MRVL.HA-RAID/Actions/Oem/TwrStorage.CreateVD", SERVED(storage_createvd),
     component_resource},
    {STORAGE "/MRVL.HA-RAID/Oem/Tarnwright/CreateVDActionInfo", SERVED(haraidactioninfo),
     component_resource},
    {STORAGE "/VROC/Oem/Tarnwright/"
             "(CreateVolumeActionInfo|VolumeDeleteActionInfo|DriveUnmarkSpareActionInfo|"
             "DriveMarkSpareActionInfo)",
     SERVED(volumeactioninfo), component_resource},

    // Systems: logs, network interfaces, metrics and OEM resources
    {"/redfish/v1/Systems/1/LogServices", SERVED(systems_logservicecollection), component_resource},
    {"/redfish/v1/Systems/1/LogServices/Log1", SERVED(systems_logservices), component_resource},
    {"/redfish/v1/Systems/1/LogServices/Log1/Actions/LogService.ClearLog",
     SERVED(systems_logservice_clearlog), system_log_clearing},
    {"/redfish/v1/Systems/1/LogServices/Log1/Actions/Oem/TwrLogService.ClearAcknowledgements",
     SERVED(systems_logservice_clearack), system_log_clearing},
    {"/redfish/v1/Systems/1/LogServices/Log1/Entries", SERVED(systems_logentrycollection),
     component_resource},
    {"/redfish/v1/Systems/1/LogServices/Log1/Entries/([0-9]+)", SERVED(systems_logentry),
     component_resource},
    {"/redfish/v1/Systems/1/NetworkInterfaces", SERVED(networkinterfacecollection),
     component_resource},
    {"/redfish/v1/Systems/1/NetworkInterfaces/([0-9]+)", SERVED(networkinterfaces),
     component_resource},
    {"/redfish/v1/Systems/1/NetworkInterfaces/([0-9]+)/NetworkDeviceFunctions",
     SERVED(sysnetworkdevicefunctcollection), component_resource},
    {"/redfish/v1/Systems/1/NetworkInterfaces/([0-9]+)/NetworkPorts",
     SERVED(sysnetworkportscollection), component_resource},
    {"/redfish/v1/Systems/1/ProcessorSummary/ProcessorMetrics", SERVED(processormetrics),
     component_resource},
    {"/redfish/v1/Systems/1/MemorySummary/MemoryMetrics", SERVED(memorysummarymetrics),
     component_resource},
    {"/redfish/v1/Systems/1/Oem/Tarnwright/NodeManager", SERVED(twrnodemanager),
     component_resource},
    {"/redfish/v1/Systems/1/Oem/Tarnwright/NodeManager/Actions/TwrNodeManager.ClearAllPolicies",
     SERVED(twrnodemanager_clearallpolicies), component_resource},
    {"/redfish/v1/Systems/1/Oem/Tarnwright/OOB", SERVED(oob_update_status), component_resource},
    {"/redfish/v1/Systems/1/Oem/Tarnwright/BmcInfo", SERVED(bmc_info), component_resource},

    // Systems: crash dumps, only while the host supports them
    {CRASHDUMP, SERVED(crashdump_logservice), component_resource, route_crashdump},
    {CRASHDUMP "/Actions/LogService.ClearLog", SERVED(crashdump_logservice_clearlog),
     system_log_clearing, route_crashdump},
    {CRASHDUMP "/Actions/Oem/Crashdump.SendRawPeci", SERVED(peci_sendraw), manager_resource,
     route_crashdump},
    {CRASHDUMP "/Actions/Oem/Crashdump.OnDemand", SERVED(crashdump_ondemand), component_resource,
     route_crashdump},
    {CRASHDUMP "/Actions/Oem/Crashdump.Telemetry", SERVED(crashdump_telemetry), component_resource,
     route_crashdump},
    {CRASHDUMP "/Entries", SERVED(crashdumpcollection), component_resource, route_crashdump},
    {CRASHDUMP "/Entries/OnDemand", SERVED(crashdump_logentry), component_resource,
     route_crashdump},
    {CRASHDUMP "/Entries/Telemetry", SERVED(crashdump_logentry), component_resource,
     route_crashdump},
    {CRASHDUMP "/Entries/OnDemand/attachment", SERVED(crashdump_attachment), component_resource,
     route_crashdump},
    {CRASHDUMP "/Entries/Telemetry/attachment", SERVED(crashdump_attachment), component_resource,
     route_crashdump},
};

}  // namespace

boost::span<const route> route_table() { return routes; }

const route_resolver& service_routes() {
    static const route_resolver resolver(route_table());
    return resolver;
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
#undef SERVED
