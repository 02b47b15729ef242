#include "framework/schema_files.h"

#include <stdexcept>
#include <unordered_map>

namespace odata::redfish {

const std::vector<schema_file>& schema_files() {
    static const std::vector<schema_file> table = {
        {"AccountService", "v1_7_0", true},
        {"ActionInfo", "v1_1_2", true},
        {"Bios", "v1_1_0", false},
        {"BootOption", "v1_0_0", false},
        {"BootOptionCollection", "", false},
        {"Certificate", "v1_3_0", false},
        {"CertificateCollection", "", false},
        {"CertificateLocations", "v1_0_0", false},
        {"CertificateService", "v1_0_0", false},
        {"Chassis", "v1_17_0", true},
        {"ChassisCollection", "", true},
        {"ComputerSystem", "v1_13_0", true},
        {"ComputerSystemCollection", "", true},
        {"Control", "v1_0_0", false},
        {"ControlCollection", "", false},
        {"Drive", "v1_7_0", false},
        {"EnvironmentMetrics", "v1_1_0", false},
        {"EthernetInterface", "v1_6_0", false},
        {"EthernetInterfaceCollection", "", false},
        {"Event", "v1_4_0", true},
        {"EventDestination", "v1_7_0", true},
        {"EventDestinationCollection", "", true},
        {"EventService", "v1_5_0", true},
        {"ExternalAccountProvider", "v1_1_0", true},
        {"HostInterface", "v1_2_0", false},
        {"HostInterfaceCollection", "", false},
        {"JsonSchemaFile", "v1_1_0", true},
        {"JsonSchemaFileCollection", "", true},
        {"LogEntry", "v1_7_0", false},
        {"LogEntryCollection", "", false},
        {"LogService", "v1_2_0", false},
        {"LogServiceCollection", "", false},
        {"Manager", "v1_8_0", true},
        {"ManagerAccount", "v1_5_0", true},
        {"ManagerAccountCollection", "", true},
        {"ManagerCollection", "", true},
        {"ManagerNetworkProtocol", "v1_5_0", false},
        {"Memory", "v1_8_0", true},
        {"MemoryCollection", "", false},
        {"MemoryMetrics", "v1_4_0", false},
        {"Message", "v1_0_0", true},
        {"MessageRegistry", "v1_4_0", true},
        {"MessageRegistryFile", "v1_1_0", true},
        {"MessageRegistryFileCollection", "", true},
        {"MetricDefinition", "v1_0_0", false},
        {"MetricDefinitionCollection", "", false},
        {"MetricReport", "v1_1_0", false},
        {"MetricReportCollection", "", false},
        {"MetricReportDefinition", "v1_3_0", false},
        {"MetricReportDefinitionCollection", "", false},
        {"NetworkAdapter", "v1_3_0", false},
        {"NetworkAdapterCollection", "", false},
        {"NetworkDeviceFunction", "v1_3_0", false},
        {"NetworkDeviceFunctionCollection", "", false},
        {"NetworkInterface", "v1_1_0", false},
        {"NetworkInterfaceCollection", "", false},
        {"NetworkPort", "v1_2_0", false},
        {"NetworkPortCollection", "", false},
        {"PCIeDevice", "v1_4_0", false},
        {"PCIeDeviceCollection", "", false},
        {"PCIeFunction", "v1_2_0", false},
        {"PCIeFunctionCollection", "", false},
        {"PCIeSlots", "v1_3_0", false},
        {"Power", "v1_6_0", true},
        {"PowerSubsystem", "v1_0_0", false},
        {"Processor", "v1_7_0", true},
        {"ProcessorCollection", "", false},
        {"ProcessorMetrics", "v1_0_0", false},
        {"Redundancy", "v1_2_0", true},
        {"Resource", "v1_8_0", true},
        {"Role", "v1_2_3", true},
        {"RoleCollection", "", true},
        {"SecureBoot", "v1_0_0", false},
        {"Sensor", "v1_1_0", true},
        {"SensorCollection", "", true},
        {"SerialInterface", "v1_1_0", false},
        {"SerialInterfaceCollection", "", false},
        {"ServiceRoot", "v1_5_2", true},
        {"Session", "v1_3_0", true},
        {"SessionCollection", "", true},
        {"SessionService", "v1_1_8", true},
        {"Settings", "v1_3_0", true},
        {"SimpleStorage", "v1_2_0", false},
        {"SimpleStorageCollection", "", false},
        {"SoftwareInventory", "v1_2_0", true},
        {"SoftwareInventoryCollection", "", true},
        {"Storage", "v1_7_0", false},
        {"StorageCollection", "", false},
        {"Task", "v1_4_3", true},
        {"TaskCollection", "", true},
        {"TaskService", "v1_1_3", true},
        {"TelemetryService", "v1_1_0", false},
        {"Thermal", "v1_6_0", true},
        {"ThermalSubsystem", "v1_0_0", false},
        {"TwrBmcInfo", "v1_0_0", false},
        {"TwrChassisExtensions", "v1_0_0", false},
        {"TwrDump", "v1_0_0", false},
        {"TwrDumpCollection", "", false},
        {"TwrDumpService", "v1_0_0", false},
        {"TwrFanMode", "v1_0_0", false},
        {"TwrFilterRule", "v1_0_0", false},
        {"TwrFilterRuleCollection", "", false},
        {"TwrFirmwareInventory", "v1_0_0", false},
        {"TwrIKVM", "v1_0_0", false},
        {"TwrIPAccessControl", "v1_0_0", false},
        {"TwrIPMIConfig", "v1_0_0", false},
        {"TwrKCSInterface", "v1_0_0", false},
        {"TwrMouseMode", "v1_0_0", false},
        {"TwrNTP", "v1_0_0", false},
        {"TwrNodeManager", "v1_0_0", false},
        {"TwrOOBUpdateStatus", "v1_0_0", false},
        {"TwrPowerExtensions", "v1_0_0", false},
        {"TwrRADIUS", "v1_0_0", false},
        {"TwrRAKP", "v1_0_0", false},
        {"TwrSSLCert", "v1_0_0", false},
        {"TwrSensorExtensions", "v1_0_0", false},
        {"TwrServiceRootExtensions", "v1_0_0", false},
        {"TwrSmartPower", "v1_0_0", false},
        {"TwrSnooping", "v1_0_0", false},
        {"TwrStorageExtensions", "v1_0_0", false},
        {"TwrSysLockdown", "v1_0_0", false},
        {"TwrSyslog", "v1_0_0", false},
        {"TwrSystemExtensions", "v1_0_0", false},
        {"TwrUpdateServiceExtensions", "v1_0_0", false},
        {"UpdateService", "v1_8_0", true},
        {"VLanNetworkInterface", "v1_3_0", false},
        {"VLanNetworkInterfaceCollection", "", false},
        {"VirtualMedia", "v1_3_0", false},
        {"VirtualMediaCollection", "", false},
        {"Volume", "v1_4_0", false},
        {"VolumeCollection", "", false},
    };
    return table;
}

// Every resource looks its schema up, some twice: hashed, once per process.
const schema_file* find_schema_file(std::string_view name) {
    static const std::unordered_map<std::string_view, const schema_file*> by_name = [] {
        std::unordered_map<std::string_view, const schema_file*> rows;
        for (const schema_file& row : schema_files()) rows.emplace(row.name, &row);
        return rows;
    }();
    const auto row = by_name.find(name);
    return row == by_name.end() ? nullptr : row->second;
}

const schema_file& schema_file_of(std::string_view name) {
    const schema_file* row = find_schema_file(name);
    if (!row) throw std::out_of_range("unknown schema: " + std::string(name));
    return *row;
}

std::string schema_type(const schema_file& schema) {
    return type_text(schema.name, schema.version, std::string());
}

namespace {

std::string make_schema_uri(const schema_file& schema) {
    constexpr std::string_view published = "/redfish/v1/JsonSchemas/";
    constexpr std::string_view dmtf = "http://redfish.dmtf.org/schemas/v1/";
    std::string uri(schema.json_published ? published : dmtf);
    uri.append(schema.name);
    if (schema.json_published) return uri;
    if (!schema.version.empty()) uri.append(".").append(schema.version);
    return uri.append(".json");
}

}  // namespace

// Built once per row: every answer's headers name a schema.
const std::string& schema_uri(const schema_file& schema) {
    static const std::vector<std::string> uris = [] {
        std::vector<std::string> built;
        for (const schema_file& row : schema_files()) built.push_back(make_schema_uri(row));
        return built;
    }();
    return uris.at(static_cast<std::size_t>(&schema - schema_files().data()));
}

}  // namespace odata::redfish
