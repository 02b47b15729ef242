#include <gtest/gtest.h>

#include <array>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/route_resolver.h"
#include "platform/libipmi.h"

namespace rf = odata::redfish;

namespace {

using captures_t = std::vector<std::string>;

// A handler that only remembers which class the resolver made.
class named_handler : public rf::webservice {
public:
    named_handler(rf::request_context& context, std::string_view name)
        : webservice(context), name(name) {}
    std::string_view name;
    rf::request_context& context() { return context_; }
};

// Factories are plain function pointers, so each class name gets its own
// slot: factory I makes a handler named after slot I.
constexpr size_t slot_count = 320;

std::vector<std::string_view>& slot_names() {
    static std::vector<std::string_view> names;
    return names;
}

template <size_t I>
std::shared_ptr<rf::webservice> make_named(rf::request_context& context) {
    return std::make_shared<named_handler>(context, slot_names().at(I));
}

template <size_t... I>
constexpr std::array<rf::handler_factory, sizeof...(I)> make_slots(std::index_sequence<I...>) {
    return {&make_named<I>...};
}

constexpr auto slot_factories = make_slots(std::make_index_sequence<slot_count>{});

rf::handler_factory factory_for(std::string_view name) {
    auto& names = slot_names();
    for (size_t slot = 0; slot < names.size(); ++slot) {
        if (names[slot] == name) return slot_factories[slot];
    }
    if (names.size() >= slot_count) return nullptr;
    names.push_back(name);
    return slot_factories[names.size() - 1];
}

// A factory for every class that the given routes name.
rf::handler_factories factories_for(const std::vector<rf::route>& routes) {
    rf::handler_factories factories;
    for (const rf::route& entry : routes)
        factories[entry.handler_class] = factory_for(entry.handler_class);
    return factories;
}

const rf::route_resolver& service_resolver() {
    static const rf::route_resolver resolver(rf::route_table(), factories_for(rf::route_table()));
    return resolver;
}

struct expected_route {
    std::string path;
    std::string_view handler_class;  // "" for no route
    captures_t captures;
};

void expect_routes(const rf::route_resolver& resolver, const std::vector<expected_route>& cases) {
    for (const expected_route& expected : cases) {
        SCOPED_TRACE(expected.path);
        captures_t captures;
        EXPECT_EQ(resolver.resolve_class(expected.path, captures), expected.handler_class);
        EXPECT_EQ(captures, expected.captures);
    }
}

std::vector<std::string_view> split(std::string_view path) {
    std::vector<std::string_view> parts;
    size_t start = 1;
    while (start <= path.size()) {
        size_t end = path.find('/', start);
        if (end == std::string_view::npos) end = path.size();
        parts.push_back(path.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

// One segment that each pattern of the table accepts.
const std::map<std::string_view, std::string_view>& pattern_samples() {
    static const std::map<std::string_view, std::string_view> samples = {
        {"([0-9]+)", "2"},
        {"(.+)", "Sample.v1_0_0"},
        {"(NIC)([0-9]+)", "NIC3"},
        {"(GPU)([0-9]+)", "GPU1"},
        {"(NVMeSSD)([0-9]+)", "NVMeSSD0"},
        {"(PCIeSSD)([0-9]+)", "PCIeSSD4"},
        {"(((NVMeSSD.)([0-9]+)(.Group.)([0-9]+)(.StorageBackplane))|((MRVL.HA-RAID.)([0-9]+)(."
         "StorageModule))|((HA-RAID.|HBA.)([0-9]+)(.StorageEnclosure.)([0-9]+))|((StorageBackplane)"
         "))",
         "MRVL.HA-RAID.0.StorageModule"},
        {"(HA-RAID.)([0-9]+)(.StorageEnclosure.)([0-9]+)", "HA-RAID.1.StorageEnclosure.2"},
        {"(((NVMeSSD.)([0-9]+)(.Group.)([0-9]+)(.StorageBackplane))|((HA-RAID.|HBA.)([0-9]+)(."
         "StorageEnclosure.)([0-9]+)))",
         "HBA.0.StorageEnclosure.1"},
        {"(Disk.Bay.)([0-9]+)", "Disk.Bay.7"},
        {"(BMC|Backup_BMC|Golden_BMC|Staging_BMC|BIOS|Backup_BIOS|Golden_BIOS|Staging_BIOS|"
         "CPLD_Motherboard|Staging_CPLD_Motherboard|BIOS_ME|StagingPMem|LCMC_Backplane)",
         "Golden_BIOS"},
        {"(Broadcom|Marvell|Staging_Broadcom|Staging_Marvell|NIC|StagingNIC|GPU|StagingGPU|"
         "NVMeController|NVMeSSDA|NVMeSSDB|PowerSupply|PMem)([0-9]+)",
         "PowerSupply2"},
        {"(BMC|BIOS)", "BIOS"},
        {"((HARAIDController.)([0-9]+))|((MRVL_HARAIDController.)([0-9]+))", "HARAIDController.1"},
        {"(MRVL_HARAIDController.)([0-9]+)", "MRVL_HARAIDController.0"},
        {"(HARAIDController.)([0-9]+)", "HARAIDController.3"},
        {"(Base.v1_10_3|BiosAttributeRegistry.v1_0_0|Event.v1_0_0|TWR.v1_0_0)", "Event.v1_0_0"},
        {"(AvgPowerConsumedHour|MinPowerConsumedHour|MaxPowerConsumedHour|AvgPowerConsumedDay|"
         "MinPowerConsumedDay|MaxPowerConsumedDay|AvgPowerConsumedWeek|MinPowerConsumedWeek|"
         "MaxPowerConsumedWeek)",
         "MaxPowerConsumedWeek"},
        {"(AvgPowerConsumptionHour|MinPowerConsumptionHour|MaxPowerConsumptionHour|"
         "AvgPowerConsumptionDay|MinPowerConsumptionDay|MaxPowerConsumptionDay|"
         "AvgPowerConsumptionWeek|MinPowerConsumptionWeek|MaxPowerConsumptionWeek)",
         "AvgPowerConsumptionDay"},
        {"(Administrator|Operator|ReadOnly|Custom)", "Custom"},
        {"(CD)([0-9]+)", "CD1"},
        {"(Floppy)([0-9]+)", "Floppy2"},
        {"(Boot)([0-9a-fA-F]+)", "Boot00fF"},
        {"(HBA|HA-RAID|HBA-IR|RAIDIntegrated|SATAEmbedded|NVMeSSD|MRVL.HA-RAID)", "HBA-IR"},
        {"(HA-RAID|RAIDIntegrated|SATAEmbedded|NVMeSSD|HBA-IR|MRVL.HA-RAID|HBA)", "SATAEmbedded"},
        {"(HA-RAID|MRVL.HA-RAID)", "MRVL.HA-RAID"},
        {"(Controller.)([0-9]+)(.Volume.)([0-9]+)", "Controller.0.Volume.1"},
        {"(RAIDIntegrated|SATAEmbedded)", "RAIDIntegrated"},
        {"(CreateVolumeActionInfo|SaveActionInfo|ClearVolumesActionInfo)", "SaveActionInfo"},
        {"(CreateVolumeActionInfo|VolumeDeleteActionInfo|DriveUnmarkSpareActionInfo|"
         "DriveMarkSpareActionInfo)",
         "DriveMarkSpareActionInfo"},
    };
    return samples;
}

bool crashdump_supported() { return is_ACD_crashdump_supported() != 0; }

}  // namespace

// The table itself: well-formed rows, and every row reachable.

TEST(RouteTable, RowsAreFullPathsWithoutShorthandOrDuplicates) {
    std::set<std::string_view> paths;
    for (const rf::route& entry : rf::route_table()) {
        SCOPED_TRACE(std::string(entry.path));
        const bool rooted =
            entry.path.substr(0, 8) == "/redfish" || entry.path.substr(0, 8) == "/restapi";
        EXPECT_TRUE(rooted);
        EXPECT_FALSE(entry.handler_class.empty());
        EXPECT_EQ(entry.path.find("//"), std::string_view::npos);
        EXPECT_NE(entry.path.back(), '/');
        EXPECT_EQ(entry.path.find("{n}"), std::string_view::npos);
        EXPECT_EQ(entry.path.find("..."), std::string_view::npos);
        EXPECT_TRUE(paths.insert(entry.path).second) << "duplicate path";
    }
    EXPECT_GT(paths.size(), 250u);
}

TEST(RouteTable, EveryRowResolvesToItsOwnClass) {
    const auto& samples = pattern_samples();
    for (const rf::route& entry : rf::route_table()) {
        SCOPED_TRACE(std::string(entry.path));
        std::string path;
        bool sampled = true;
        for (std::string_view segment : split(entry.path)) {
            path += '/';
            if (segment.front() != '(') {
                path += segment;
                continue;
            }
            auto sample = samples.find(segment);
            if (sample == samples.end()) {
                ADD_FAILURE() << "no sample for pattern " << segment;
                sampled = false;
                break;
            }
            path += sample->second;
        }
        if (!sampled) continue;
        captures_t captures;
        std::string_view expected = entry.handler_class;
        if (entry.crashdump && !crashdump_supported()) expected = "";
        EXPECT_EQ(service_resolver().resolve_class(path, captures), expected) << path;
    }
}

// The edge cases that the route vocabulary must keep.

TEST(RouteResolver, NamedEdgeCases) {
    expect_routes(
        service_resolver(),
        {
            {"/redfish/v1/Chassis/1/PCIeDevices/NIC3", "nic", {"NIC", "3"}},
            {"/redfish/v1/Chassis/1/PCIeDevices/NIC", "", {}},
            {"/redfish/v1/Systems/1/BootOptions/Boot000A", "bootoptions", {"Boot", "000A"}},
            {"/redfish/v1/Systems/1/BootOptions/Boot00fe", "bootoptions", {"Boot", "00fe"}},
            {"/redfish/v1/Systems/1/BootOptions/Boot00G1", "", {}},
            {"/redfish/v1/Chassis/2", "", {}},
            {"/redfish/v1/Systems/2", "", {}},
            {"/redfish/v1/Managers/2", "", {}},
            {"/redfish/v1/Registries/TWR.v1_0_0", "messageregisteryfile", {"TWR.v1_0_0"}},
            {"/redfish/v1/Registries/Base.v1_10_3", "messageregisteryfile", {"Base.v1_10_3"}},
            {"/redfish/v1/Registries/Base.v1_10_2", "", {}},
        });
}

TEST(RouteResolver, HexadecimalOnlyInBootOptions) {
    expect_routes(service_resolver(), {
                                          {"/redfish/v1/Chassis/1/Sensors/1a", "", {}},
                                          {"/redfish/v1/Chassis/1/Sensors/A", "", {}},
                                          {"/redfish/v1/Systems/1/Memory/0A", "", {}},
                                          {"/redfish/v1/Chassis/1/PCIeDevices/NIC1F", "", {}},
                                          {"/redfish/v1/TaskService/Tasks/ff", "", {}},
                                          {"/redfish/v1/AccountService/Accounts/0x2", "", {}},
                                      });
}

TEST(RouteResolver, PatternsMatchWholeSegments) {
    expect_routes(service_resolver(),
                  {
                      {"/redfish/v1/Chassis/1/PCIeDevices/NIC3x", "", {}},
                      {"/redfish/v1/Chassis/1/PCIeDevices/xNIC3", "", {}},
                      {"/redfish/v1/Chassis/1/Sensors/3 ", "", {}},
                      {"/redfish/v1/Systems/1/BootOptions/Boot0001.", "", {}},
                      {"/redfish/v1/Registries/TWR.v1_0_0x", "", {}},
                      {"/redfish/v1/Registries/XTWR.v1_0_0", "", {}},
                      {"/redfish/v1/AccountService/Roles/Administrators", "", {}},
                      {"/redfish/v1/Managers/1/VirtualMedia/CD1CD2", "", {}},
                      {"/redfish/v1/UpdateService/FirmwareInventory/BMC2", "", {}},
                      {"/redfish/v1/UpdateService/FirmwareInventory/NIC", "", {}},
                  });
}

TEST(RouteResolver, SegmentsAreCaseSensitive) {
    expect_routes(service_resolver(),
                  {
                      {"/Redfish/v1", "", {}},
                      {"/redfish/V1", "", {}},
                      {"/redfish/v1/chassis", "", {}},
                      {"/redfish/v1/Chassis/1/pciedevices", "", {}},
                      {"/redfish/v1/Chassis/1/PCIeDevices/nic3", "", {}},
                      {"/redfish/v1/Systems/1/BootOptions/boot000A", "", {}},
                      {"/redfish/v1/Registries/twr.v1_0_0", "", {}},
                      {"/redfish/v1/AccountService/Roles/readonly", "", {}},
                      {"/redfish/v1/UpdateService/FirmwareInventory/bmc", "", {}},
                  });
}

TEST(RouteResolver, EmptySegmentsAndTrailingSlashAreIgnored) {
    expect_routes(service_resolver(),
                  {
                      {"/redfish/v1/", "service_root", {}},
                      {"/redfish/v1", "service_root", {}},
                      {"/redfish/", "redfish_ver", {}},
                      {"/redfish/v1/Chassis/1/", "chassis", {}},
                      {"/redfish/v1/Chassis/1/PCIeDevices/GPU2/", "gpu", {"GPU", "2"}},
                      {"//redfish//v1///Systems/1", "system", {}},
                      {"/", "", {}},
                      {"///", "", {}},
                  });
}

TEST(RouteResolver, InvalidUriThrows) {
    rf::request_context context;
    captures_t captures;
    for (std::string path : {"", "redfish/v1", " /redfish", "Chassis/1"}) {
        SCOPED_TRACE(path);
        try {
            service_resolver().resolve(path, context);
            ADD_FAILURE() << "no exception";
        } catch (const std::invalid_argument& error) {
            EXPECT_EQ(std::string(error.what()), "provided uri is invalid: " + path);
        }
        EXPECT_THROW(service_resolver().resolve_class(path, captures), std::invalid_argument);
    }
}

TEST(RouteResolver, OverlongSegmentsMatchNoPattern) {
    const std::string long_number(100000, '7');
    expect_routes(service_resolver(), {
                                          {"/redfish/v1/Chassis/1/Sensors/" + long_number, "", {}},
                                          {"/redfish/v1/JsonSchemas/" + long_number, "", {}},
                                          {"/redfish/v1/Chassis/1/Sensors/" + std::string(200, '7'),
                                           "sensor",
                                           {std::string(200, '7')}},
                                      });
}

// A sample of each part of the table, with the captures handed to the handler.

TEST(RouteResolver, TopLevelRoutes) {
    expect_routes(service_resolver(),
                  {
                      {"/redfish", "redfish_ver", {}},
                      {"/redfish/v1", "service_root", {}},
                      {"/redfish/v1/odata", "servicedocument", {}},
                      {"/restapi", "restapi_ver", {}},
                      {"/restapi/twri", "", {}},
                      {"/restapi/twri/Actions", "", {}},
                      {"/restapi/twri/Actions/File.Import", "common_fileoperation", {}},
                      {"/restapi/twri/Actions/File.Export", "common_fileoperation", {}},
                      {"/restapi/twri/Actions/BiosFile.Upload", "biosfile_upload", {}},
                      {"/restapi/twri/Actions/BiosFile.Download", "biosfile_download", {}},
                      {"/redfish/v2", "", {}},
                  });
}

TEST(RouteResolver, ChassisRoutes) {
    expect_routes(service_resolver(),
                  {
                      {"/redfish/v1/Chassis", "chassiscollection", {}},
                      {"/redfish/v1/Chassis/1", "chassis", {}},
                      {"/redfish/v1/Chassis/1/Thermal", "thermal", {}},
                      {"/redfish/v1/Chassis/1/Power", "power", {}},
                      {"/redfish/v1/Chassis/1/Sensors/12", "sensor", {"12"}},
                      {"/redfish/v1/Chassis/1/NetworkAdapters/2/NetworkDeviceFunctions/1",
                       "networkdevicefunction",
                       {"2", "1"}},
                      {"/redfish/v1/Chassis/1/NetworkAdapters/0/NetworkPorts",
                       "networkportscollection",
                       {"0"}},
                      {"/redfish/v1/Chassis/1/PCIeDevices/NIC3/PCIeFunctions",
                       "nicfunctioncollection",
                       {"NIC", "3"}},
                      {"/redfish/v1/Chassis/1/PCIeDevices/GPU10/PCIeFunctions/0",
                       "gpufunc",
                       {"GPU", "10", "0"}},
                      {"/redfish/v1/Chassis/1/PCIeDevices/NVMeSSD1", "nvmessd", {"NVMeSSD", "1"}},
                      {"/redfish/v1/Chassis/1/PCIeDevices/PCIeSSD2/PCIeFunctions/1",
                       "pciessdfunc",
                       {"PCIeSSD", "2", "1"}},
                      {"/redfish/v1/Chassis/1/PCIeSlots", "pcieslots", {}},
                      {"/redfish/v1/Chassis/1/PCIeDevices/NIC3/Actions", "", {}},
                  });
}

TEST(RouteResolver, ChassisStorageEnclosureRoutes) {
    expect_routes(
        service_resolver(),
        {
            {"/redfish/v1/Chassis/StorageBackplane",
             "storagepod",
             {"StorageBackplane", "StorageBackplane", "StorageBackplane"}},
            {"/redfish/v1/Chassis/HA-RAID.0.StorageEnclosure.1",
             "storagepod",
             {"HA-RAID.0.StorageEnclosure.1", "HA-RAID.0.StorageEnclosure.1", "HA-RAID.", "0",
              ".StorageEnclosure.", "1"}},
            {"/redfish/v1/Chassis/NVMeSSD.1.Group.2.StorageBackplane/Drives/Disk.Bay.5",
             "diskdrive",
             {"NVMeSSD.1.Group.2.StorageBackplane", "NVMeSSD.1.Group.2.StorageBackplane",
              "NVMeSSD.", "1", ".Group.", "2", ".StorageBackplane", "Disk.Bay.", "5"}},
            {"/redfish/v1/Chassis/MRVL.HA-RAID.3.StorageModule/Drives/Disk.Bay.0",
             "diskdrive",
             {"MRVL.HA-RAID.3.StorageModule", "MRVL.HA-RAID.3.StorageModule", "MRVL.HA-RAID.", "3",
              ".StorageModule", "Disk.Bay.", "0"}},
            {"/redfish/v1/Chassis/HBA.0.StorageEnclosure.0/Drives/Disk.Bay.2/Actions/Oem/"
             "TwrDrive.Indicate",
             "drive_indicate",
             {"HBA.0.StorageEnclosure.0", "HBA.0.StorageEnclosure.0", "HBA.", "0",
              ".StorageEnclosure.", "0", "Disk.Bay.", "2"}},
            {"/redfish/v1/Chassis/StorageBackplane/Drives/Disk.Bay.1/Actions/Drive.SecureErase",
             "drive_secureerase",
             {"StorageBackplane", "StorageBackplane", "StorageBackplane", "Disk.Bay.", "1"}},
            {"/redfish/v1/Chassis/StorageBackplane/Drives/Disk.Bay.1/Actions/Oem/"
             "TwrDrive.SecureEraseAbort",
             "drive_secureeraseabort",
             {"StorageBackplane", "StorageBackplane", "StorageBackplane", "Disk.Bay.", "1"}},
            {"/redfish/v1/Chassis/StorageBackplane/Drives/Disk.Bay.1/IndicateActionInfo",
             "drivesactioninfo",
             {"StorageBackplane", "StorageBackplane", "StorageBackplane", "Disk.Bay.", "1"}},
            {"/redfish/v1/Chassis/StorageBackplane/Drives", "", {}},
            {"/redfish/v1/Chassis/HA-RAID.0.StorageEnclosure", "", {}},
            {"/redfish/v1/Chassis/SAS.0.StorageEnclosure.1", "", {}},
        });
}

TEST(RouteResolver, ServiceRoutes) {
    expect_routes(
        service_resolver(),
        {
            {"/redfish/v1/SessionService/Sessions/42", "sessions", {"42"}},
            {"/redfish/v1/SessionService/Sessions", "sessionscollection", {}},
            {"/redfish/v1/EventService/Subscriptions/16", "eventdestination", {"16"}},
            {"/redfish/v1/EventService/Actions/EventService.SubmitTestEvent",
             "eventservice_submittestevent",
             {}},
            {"/redfish/v1/EventService/SubmitTestEventActionInfo", "submittesteventactioninfo", {}},
            {"/redfish/v1/TaskService/Tasks/7/TaskMonitor", "taskmonitor", {"7"}},
            {"/redfish/v1/TaskMonitor/a1B2c3", "taskmonitor", {"a1B2c3"}},
            {"/redfish/v1/TaskMonitor", "", {}},
            {"/redfish/v1/CertificateService/Actions/CertificateService.ReplaceCertificate",
             "replace_certificate",
             {}},
            {"/redfish/v1/CertificateService/GenerateCSRActionInfo", "generate_csr_actioninfo", {}},
            {"/redfish/v1/Oem/Tarnwright/DumpService/Dumps/HostCrashDump/Actions/TwrDump.Download",
             "dump_download",
             {}},
            {"/redfish/v1/Oem/Tarnwright/DumpService/Dumps/DriveSmartDump/Actions/"
             "TwrDriveSmartDump.Generate",
             "drivesmart_generate",
             {}},
            {"/redfish/v1/Oem/Tarnwright/DumpService/Actions/TwrDumpService.CreateDump",
             "dumpservice_createdump",
             {}},
            {"/redfish/v1/Registries/BiosAttributeRegistry.v1_0_0",
             "messageregisteryfile",
             {"BiosAttributeRegistry.v1_0_0"}},
            {"/redfish/v1/JsonSchemas/ServiceRoot.v1_5_2",
             "json_file_common",
             {"ServiceRoot.v1_5_2"}},
            {"/redfish/v1/JsonSchemas/ServiceRoot.v1_5_2/extra", "", {}},
            {"/redfish/v1/AccountService/Accounts/3", "manageraccount", {"3"}},
            {"/redfish/v1/AccountService/Roles/ReadOnly", "role", {"ReadOnly"}},
        });
}

TEST(RouteResolver, UpdateServiceRoutes) {
    const std::string twr = "/redfish/v1/UpdateService/Oem/Tarnwright/FirmwareInventory";
    expect_routes(
        service_resolver(),
        {
            {"/redfish/v1/UpdateService", "updateservice", {}},
            {"/redfish/v1/UpdateService/upload", "upload", {}},
            {"/redfish/v1/UpdateService/Actions/UpdateService.StartUpdate",
             "updateservice_startupdate",
             {}},
            {"/redfish/v1/UpdateService/Actions/Oem/TwrUpdateService.Install",
             "twrupdateservice_install",
             {}},
            {"/redfish/v1/UpdateService/FirmwareInventory", "firmwareinventorycollection", {}},
            {"/redfish/v1/UpdateService/FirmwareInventory/Staging_CPLD_Motherboard",
             "firmwareinventory",
             {"Staging_CPLD_Motherboard"}},
            {"/redfish/v1/UpdateService/FirmwareInventory/StagingNIC12",
             "firmwareinventory",
             {"StagingNIC", "12"}},
            {"/redfish/v1/UpdateService/FirmwareInventory/NVMeSSDB0",
             "firmwareinventory",
             {"NVMeSSDB", "0"}},
            {twr, "twrfirmwareinventorycollection", {}},
            {twr + "/BMC", "twrfirmwareinventory", {"BMC"}},
            {twr + "/MRVL_HARAIDController.2",
             "twrfirmwareinventory",
             {"MRVL_HARAIDController.2", "MRVL_HARAIDController.", "2"}},
            {twr + "/HARAIDController.0",
             "twrfirmwareinventory",
             {"HARAIDController.0", "HARAIDController.", "0"}},
            // The member patterns lead nowhere below; the walk falls back to the
            // sibling that carries the actions, without their captures.
            {twr + "/BIOS/Actions/TwrFirmwareInventory.EnterUpdateMode",
             "twrfirmwareinventory_enterupdatemode",
             {}},
            {twr + "/HARAIDController.1/Actions/TwrFirmwareInventory.Upload",
             "twrfirmwareinventory_upload",
             {"HARAIDController.", "1"}},
            {twr + "/MRVL_HARAIDController.4/Actions/TwrFirmwareInventory.Cancel",
             "twrfirmwareinventory_cancel",
             {"MRVL_HARAIDController.", "4"}},
            {twr + "/BMC/UpdateActionInfo", "updateactioninfo", {}},
            {"/redfish/v1/UpdateService/Oem/Tarnwright/SSLCert/Actions/TwrSSLCert.Upload",
             "sslcert_upload",
             {}},
            {"/redfish/v1/UpdateService/Oem/Tarnwright/IPMIConfig/Actions/TwrIPMIConfig.Download",
             "ipmiconfig_download",
             {}},
        });
}

TEST(RouteResolver, TelemetryRoutes) {
    expect_routes(
        service_resolver(),
        {
            {"/redfish/v1/TelemetryService", "telemetryservice", {}},
            {"/redfish/v1/TelemetryService/MetricDefinitions", "metricdefinitions", {}},
            {"/redfish/v1/TelemetryService/MetricDefinitions/AvgPowerConsumedHour",
             "powerconsumed",
             {"AvgPowerConsumedHour"}},
            {"/redfish/v1/TelemetryService/MetricDefinitions/AvgPowerConsumptionHour", "", {}},
            {"/redfish/v1/TelemetryService/MetricReportDefinitions/MinPowerConsumptionWeek",
             "defpowerconsumption",
             {"MinPowerConsumptionWeek"}},
            {"/redfish/v1/TelemetryService/MetricReports/MaxPowerConsumptionDay",
             "powerconsumption",
             {"MaxPowerConsumptionDay"}},
            {"/redfish/v1/TelemetryService/MetricReports/MaxPowerConsumedDay", "", {}},
            {"/redfish/v1/TelemetryService/MetricReports/AvgPowerConsumptionMonth", "", {}},
        });
}

TEST(RouteResolver, ManagerRoutes) {
    expect_routes(
        service_resolver(),
        {
            {"/redfish/v1/Managers", "managercollection", {}},
            {"/redfish/v1/Managers/1", "manager", {}},
            {"/redfish/v1/Managers/1/Actions/Oem/TwrManagerConfig.Reset",
             "managerconfig_reset",
             {}},
            {"/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1/Actions/"
             "Certificate.Renew",
             "certificate_renew",
             {}},
            {"/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/2", "", {}},
            {"/redfish/v1/Managers/1/EthernetInterfaces/ToHost", "common_ethernetinterface", {}},
            {"/redfish/v1/Managers/1/EthernetInterfaces/1", "common_ethernetinterface", {"1"}},
            {"/redfish/v1/Managers/1/HostInterfaces/1/HostEthernetInterfaces",
             "managers_hostinterfaces_hostethernetinterfacecollection",
             {}},
            {"/redfish/v1/Managers/1/SerialInterfaces/1", "serialInterface", {"1"}},
            {"/redfish/v1/Managers/1/LogServices/Log1/Entries/99", "managers_logentry", {"99"}},
            {"/redfish/v1/Managers/1/VirtualMedia/CD1", "virtualmedia", {"CD", "1"}},
            {"/redfish/v1/Managers/1/VirtualMedia/Floppy2/Actions/VirtualMedia.EjectMedia",
             "virtualmedia_ejectmedia",
             {"Floppy", "2"}},
            {"/redfish/v1/Managers/1/VirtualMedia/CD1/InsertMediaActionInfo",
             "insertmediaactioninfo",
             {"CD", "1"}},
            {"/redfish/v1/Managers/1/VirtualMedia/USB1", "", {}},
            {"/redfish/v1/Managers/1/Oem/Tarnwright/TWRRAKP", "rakp", {}},
            {"/redfish/v1/Managers/1/Oem/Tarnwright/KCSInterface", "kcsinterface", {}},
            {"/redfish/v1/Managers/1/Oem/Tarnwright/IPAccessControl/FilterRules/3",
             "filterrule",
             {"3"}},
        });
}

TEST(RouteResolver, SystemRoutes) {
    expect_routes(
        service_resolver(),
        {
            {"/redfish/v1/Systems", "systemcollection", {}},
            {"/redfish/v1/Systems/1", "system", {}},
            {"/redfish/v1/Systems/1/Actions", "", {}},
            {"/redfish/v1/Systems/1/Actions/ComputerSystem.Reset", "computersystem_reset", {}},
            {"/redfish/v1/Systems/1/ResetActionInfo", "resetactioninfo", {}},
            {"/redfish/v1/Systems/1/Bios/SD", "bios", {}},
            {"/redfish/v1/Systems/1/SecureBoot/ResetKeysActionInfo",
             "secureboot_resetkeysactioninfo",
             {}},
            {"/redfish/v1/Systems/1/Processors/2", "processor", {"2"}},
            {"/redfish/v1/Systems/1/Memory/11/MemoryMetrics", "memorymetrics", {"11"}},
            {"/redfish/v1/Systems/1/EthernetInterfaces/ToManager", "ethernetinterface", {}},
            {"/redfish/v1/Systems/1/EthernetInterfaces/1/VLANs/4",
             "vlannetworkinterface",
             {"1", "4"}},
            {"/redfish/v1/Systems/1/LogServices/Log1/Actions/Oem/"
             "TwrLogService.ClearAcknowledgements",
             "systems_logservice_clearack",
             {}},
            {"/redfish/v1/Systems/1/NetworkInterfaces/0/NetworkPorts",
             "sysnetworkportscollection",
             {"0"}},
            {"/redfish/v1/Systems/1/ProcessorSummary/ProcessorMetrics", "processormetrics", {}},
            {"/redfish/v1/Systems/1/MemorySummary/MemoryMetrics", "memorysummarymetrics", {}},
            {"/redfish/v1/Systems/1/Oem/Tarnwright/NodeManager/Actions/"
             "TwrNodeManager.ClearAllPolicies",
             "twrnodemanager_clearallpolicies",
             {}},
            {"/redfish/v1/Systems/1/Oem/Tarnwright/BmcInfo", "bmc_info", {}},
        });
}

TEST(RouteResolver, SystemStorageRoutes) {
    const std::string storage = "/redfish/v1/Systems/1/Storage";
    expect_routes(
        service_resolver(),
        {
            {storage, "storagecollection", {}},
            {storage + "/MRVL.HA-RAID", "storage", {"MRVL.HA-RAID"}},
            {storage + "/VROC", "", {}},
            {storage + "/HBA-IR/Volumes", "volumecollection", {"HBA-IR"}},
            {storage + "/HA-RAID/Volumes/Controller.0.Volume.1",
             "volume",
             {"HA-RAID", "Controller.", "0", ".Volume.", "1"}},
            {storage + "/VROC/Volumes/Controller.1.Volume.0",
             "volume",
             {"Controller.", "1", ".Volume.", "0"}},
            {storage + "/SATAEmbedded/Volumes/3", "volume", {"SATAEmbedded", "3"}},
            {storage + "/SATAEmbedded/Volumes/Controller.0.Volume.1", "", {}},
            {storage + "/HA-RAID/Volumes/2", "", {}},
            {storage +
                 "/MRVL.HA-RAID/Volumes/Controller.0.Volume.1/Actions/Oem/TwrVolume.RebuildVD",
             "volume_rebuildvd",
             {"MRVL.HA-RAID", "Controller.", "0", ".Volume.", "1"}},
            {storage + "/RAIDIntegrated/Volumes/0/Oem/Tarnwright/IndicateActionInfo",
             "volumeactioninfo",
             {"RAIDIntegrated", "0"}},
            {storage + "/HA-RAID/Actions/Oem/TwrHARAIDController.Save",
             "haraidcontroller_save",
             {}},
            {storage + "/HA-RAID/Oem/Tarnwright/ClearVolumesActionInfo",
             "haraidactioninfo",
             {"ClearVolumesActionInfo"}},
            {storage + "/MRVL.HA-RAID/Actions/Oem/TwrStorage.CreateVD", "storage_createvd", {}},
            {storage + "/HBA/Actions/Oem/TwrStorage.CreateVD", "", {}},
            {storage + "/VROC/Oem/Tarnwright/DriveUnmarkSpareActionInfo",
             "volumeactioninfo",
             {"DriveUnmarkSpareActionInfo"}},
        });
}

// Crash-dump routes exist only while the platform supports crash dumps.
TEST(RouteResolver, CrashdumpRoutesFollowPlatformSupport) {
    const std::string crashdump = "/redfish/v1/Systems/1/LogServices/Crashdump";
    const std::vector<std::pair<std::string, std::string_view>> routes = {
        {crashdump, "crashdump_logservice"},
        {crashdump + "/Actions/LogService.ClearLog", "crashdump_logservice_clearlog"},
        {crashdump + "/Actions/Oem/Crashdump.SendRawPeci", "peci_sendraw"},
        {crashdump + "/Actions/Oem/Crashdump.OnDemand", "crashdump_ondemand"},
        {crashdump + "/Actions/Oem/Crashdump.Telemetry", "crashdump_telemetry"},
        {crashdump + "/Entries", "crashdumpcollection"},
        {crashdump + "/Entries/OnDemand", "crashdump_logentry"},
        {crashdump + "/Entries/Telemetry", "crashdump_logentry"},
    };
    const bool supported = crashdump_supported();
    for (const auto& [path, handler_class] : routes) {
        SCOPED_TRACE(path);
        captures_t captures;
        EXPECT_EQ(service_resolver().resolve_class(path, captures), supported ? handler_class : "");
        rf::request_context context;
        EXPECT_EQ(service_resolver().resolve(path, context) != nullptr, supported);
    }
    for (const rf::route& entry : rf::route_table()) {
        const bool under_crashdump = entry.path.substr(0, crashdump.size()) == crashdump;
        EXPECT_EQ(entry.crashdump, under_crashdump) << entry.path;
    }
    // The sibling log service does not depend on crash-dump support.
    expect_routes(service_resolver(),
                  {
                      {"/redfish/v1/Systems/1/LogServices/Log1", "systems_logservices", {}},
                      {"/redfish/v1/Systems/1/LogServices", "systems_logservicecollection", {}},
                      {"/redfish/v1/Oem/Tarnwright/DumpService/Dumps/HostCrashDump", "dump", {}},
                  });
}

// Factories: what resolve makes.

TEST(RouteResolverFactories, ResolveMakesTheRoutedClassWithCaptures) {
    rf::request_context context;
    context.captures = {"stale"};
    auto handler = service_resolver().resolve(
        "/redfish/v1/Chassis/1/PCIeDevices/NIC3/PCIeFunctions/1", context);
    ASSERT_NE(handler, nullptr);
    auto* named = dynamic_cast<named_handler*>(handler.get());
    ASSERT_NE(named, nullptr);
    EXPECT_EQ(named->name, "nicfunc");
    EXPECT_EQ(&named->context(), &context);
    EXPECT_EQ(context.captures, (captures_t{"NIC", "3", "1"}));

    context.captures = {"stale"};
    EXPECT_EQ(service_resolver().resolve("/redfish/v1/Chassis/9", context), nullptr);
    EXPECT_TRUE(context.captures.empty());
}

TEST(RouteResolverFactories, ClassWithoutFactoryResolvesToNothing) {
    rf::handler_factories only_chassis = {{"chassis", factory_for("chassis")}, {"system", nullptr}};
    const rf::route_resolver resolver(rf::route_table(), only_chassis);
    rf::request_context context;

    auto handler = resolver.resolve("/redfish/v1/Chassis/1", context);
    ASSERT_NE(handler, nullptr);
    EXPECT_EQ(static_cast<named_handler*>(handler.get())->name, "chassis");

    EXPECT_EQ(resolver.resolve("/redfish/v1/Chassis", context), nullptr);
    EXPECT_EQ(resolver.resolve("/redfish/v1/Systems/1", context), nullptr);
    EXPECT_EQ(resolver.resolve("/redfish/v1/Chassis/1/PCIeDevices/NIC3", context), nullptr);
    captures_t captures;
    EXPECT_EQ(resolver.resolve_class("/redfish/v1/Chassis/1/PCIeDevices/NIC3", captures), "");
    EXPECT_TRUE(captures.empty());
}

// The tree on its own: small tables that isolate one rule each.

TEST(RouteResolverTree, BacktrackingDropsTheCapturesOfDeadEnds) {
    const std::vector<rf::route> routes = {
        {"/a/(x)([0-9]+)", "member"},
        {"/a/(x)([0-9]+)/(y)([0-9]+)", "nested"},
        {"/a/([a-z])([0-9]+)/b/c", "fallback"},
        {"/a/x1/b", "literal"},
    };
    const rf::route_resolver resolver(routes, factories_for(routes));
    expect_routes(resolver, {
                                {"/a/x1", "member", {"x", "1"}},
                                {"/a/x1/y2", "nested", {"x", "1", "y", "2"}},
                                {"/a/x1/b/c", "fallback", {"x", "1"}},
                                {"/a/x1/b", "literal", {}},
                                {"/a/z1/b", "", {}},
                                {"/a/x1/y2/z", "", {}},
                            });
}

TEST(RouteResolverTree, OnlyParticipatingGroupsAreCaptured) {
    const std::vector<rf::route> routes = {
        {"/r/((a)([0-9]))|((b)([0-9]))", "either"},
        {"/r/(c)?(d)", "optional"},
    };
    const rf::route_resolver resolver(routes, factories_for(routes));
    expect_routes(resolver, {
                                {"/r/a1", "either", {"a1", "a", "1"}},
                                {"/r/b2", "either", {"b2", "b", "2"}},
                                {"/r/d", "optional", {"d"}},
                                {"/r/cd", "optional", {"c", "d"}},
                            });
}

TEST(RouteResolverTree, NumberShorthandAndIntermediateNodes) {
    const std::vector<rf::route> routes = {
        {"/items/{n}/parts", "parts"},
        {"/items/([0-9]+)", "item"},
        {"/items/{n}", "shadowed"},
    };
    const rf::route_resolver resolver(routes, factories_for(routes));
    expect_routes(resolver, {
                                {"/items/5/parts", "parts", {"5"}},
                                {"/items/5", "item", {"5"}},
                                {"/items", "", {}},
                                {"/items/5/parts/6", "", {}},
                            });
}

TEST(RouteResolverTree, CrashdumpFlagFallsBackToSiblings) {
    const std::vector<rf::route> routes = {
        {"/logs/(dump)", "crash", true},
        {"/logs/([a-z]+)", "plain"},
    };
    const rf::route_resolver resolver(routes, factories_for(routes));
    if (crashdump_supported()) {
        expect_routes(resolver, {{"/logs/dump", "crash", {"dump"}}});
    } else {
        expect_routes(resolver, {{"/logs/dump", "plain", {"dump"}}});
    }
    expect_routes(resolver, {{"/logs/other", "plain", {"other"}}});
}

// The resolver compiles its table once and keeps its own copy of it.
TEST(RouteResolverTree, OutlivesItsSourceTableAndGivesStableAnswers) {
    std::unique_ptr<rf::route_resolver> resolver;
    {
        std::vector<std::string> texts = {"/dev/(sd)([a-z])", "disk", "/dev/(sd)([a-z])/{n}",
                                          "partition"};
        const std::vector<rf::route> routes = {{texts[0], texts[1]}, {texts[2], texts[3]}};
        rf::handler_factories factories = {{texts[1], factory_for("disk")},
                                           {texts[3], factory_for("partition")}};
        resolver = std::make_unique<rf::route_resolver>(routes, factories);
        for (std::string& text : texts) text.assign(text.size(), '#');
    }
    captures_t captures = {"left", "over"};
    for (int round = 0; round < 10000; ++round) {
        ASSERT_EQ(resolver->resolve_class(round % 2 ? "/dev/sdb/3" : "/dev/sdb", captures),
                  round % 2 ? "partition" : "disk");
        ASSERT_EQ(captures.size(), round % 2 ? 3u : 2u);
    }
    EXPECT_EQ(captures, (captures_t{"sd", "b", "3"}));
    rf::request_context context;
    auto handler = resolver->resolve("/dev/sdc/1", context);
    ASSERT_NE(handler, nullptr);
    EXPECT_EQ(static_cast<named_handler*>(handler.get())->name, "partition");
}
