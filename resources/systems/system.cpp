#include "resources/systems/system.h"

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "platform/libbios.h"
#include "platform/libipmi.h"
#include "platform/libipmi_sensors.h"
#include "platform/libipmi_users.h"
#include "platform/libweb.h"
#include "resources/chassis/chassis_fru.h"
#include "resources/chassis/indicator_led.h"
#include "resources/chassis/power_state.h"
#include "resources/systems/system_boot.h"
#include "resources/systems/system_health.h"
#include "resources/systems/system_inventory.h"
#include "resources/systems/system_patch.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

constexpr const char* collection_links[][2] = {
    {"Processors", "/Processors"},
    {"Memory", "/Memory"},
    {"EthernetInterfaces", "/EthernetInterfaces"},
    {"NetworkInterfaces", "/NetworkInterfaces"},
    {"SimpleStorage", "/SimpleStorage"},
    {"Storage", "/Storage"},
    {"LogServices", "/LogServices"},
    {"SecureBoot", "/SecureBoot"},
    {"Bios", "/Bios"},
};

constexpr int bios_version_size = 64;
// The host's serial port is shared: one console session at a time.
constexpr int serial_console_sessions = 1;
constexpr int serial_console_ssh_port = 2200;

std::string system_path(const char* path) { return std::string(system_uri) + path; }

boost::json::object reset_action() {
    return boost::json::object(
        {{"target", system_reset_target_uri}, {"@Redfish.ActionInfo", system_reset_actioninfo_uri}},
        answer_storage());
}

boost::json::object oem_object() {
    boost::json::object tarnwright({{"@odata.type", "#TwrSystemExtensions.v1_0_0.System"}},
                                   answer_storage());
    if (at_p_St_GlobalVar->node_manager_present)
        tarnwright["NodeManager"] = link(system_path("/Oem/Tarnwright/NodeManager"));
    tarnwright["OOB"] = link(system_path("/Oem/Tarnwright/OOB"));
    tarnwright["BmcInfo"] = link(system_path("/Oem/Tarnwright/BmcInfo"));
    return boost::json::object({{"Tarnwright", std::move(tarnwright)}}, answer_storage());
}

// Serial over LAN through IPMI, and the same console through the BMC's SSH.
boost::json::object serial_console() {
    return boost::json::object(
        {{"MaxConcurrentSessions", serial_console_sessions},
         {"IPMI", {{"ServiceEnabled", true}}},
         {"SSH", {{"ServiceEnabled", true}, {"Port", serial_console_ssh_port}}}},
        answer_storage());
}

boost::json::object processor_summary(const smbios_inventory& inventory) {
    return boost::json::object(
        {{"Count", inventory.processor_count},
         {"Model", inventory.processor_model},
         {"Status", status_object(processor_health_code())},
         {"Metrics", link(system_path("/ProcessorSummary/ProcessorMetrics"))}},
        answer_storage());
}

boost::json::object memory_summary(const smbios_inventory& inventory) {
    return boost::json::object({{"TotalSystemMemoryGiB", inventory.memory_gib},
                                {"MemoryMirroring", "System"},
                                {"Status", status_object(UtilCheckAllMemHealthAndTemp())},
                                {"Metrics", link(system_path("/MemorySummary/MemoryMetrics"))}},
                               answer_storage());
}

}  // namespace

system::system(request_context& context)
    : redfish(context, "ComputerSystem", std::string(schema_file_of("ComputerSystem").version),
              "Computer System", system_uri) {}

int system::get(request_context&) {
    set_common_properties();
    set("Description", "Description of server");
    set("Status", status_object(system_health_code()));
    const part_identity identity = read_part_identity();
    set("SerialNumber", identity.serial_number);
    set("PartNumber", identity.part_number);
    if (const std::optional<chassis_fru> fru = read_chassis_fru()) set("AssetTag", fru->asset_tag);
    set_smbios_properties();
    set("IndicatorLED", indicator_led_state());
    set("PowerState", power_state_text());
    set("Boot", boot_object());
    set("SerialConsole", serial_console());
    set_collection_links();
    set("Links", {{"Chassis", link_array("/redfish/v1/Chassis/1")},
                  {"ManagedBy", link_array("/redfish/v1/Managers/1")}});
    set("Actions", {{"#ComputerSystem.Reset", reset_action()},
                    {"#ComputerSystem.SetDefaultBootOrder",
                     {{"target", system_default_boot_order_target_uri}}}});
    set("Oem", oem_object());
    return 0;
}

void system::set_smbios_properties() {
    const std::optional<smbios_inventory> inventory = read_smbios_inventory();
    if (!inventory) return;
    set("SystemType", "Physical");
    char bios_version[bios_version_size] = "";
    if (UtilGetLatestBiosRev(bios_version, sizeof bios_version) == PLT_OK)
        set("BiosVersion", bios_version);
    set("Manufacturer", inventory->manufacturer);
    set("Model", inventory->model);
    set("SKU", inventory->sku);
    if (inventory->uuid.empty()) {
        console_log("[ERROR] ComputerSystem.UUID::%s\n", inventory->uuid.c_str());
    } else {
        set("UUID", inventory->uuid);
    }
    set("ProcessorSummary", processor_summary(*inventory));
    set("MemorySummary", memory_summary(*inventory));
}

void system::set_collection_links() {
    for (const auto& [name, path] : collection_links) set(name, link(system_path(path)));
}

int system::patch(request_context& context) {
    const boost::json::value body = context.body_json();
    result_record result = general_error();
    const system_changes changes =
        read_system_changes(request_object(body), GetSetSysLockdownEnable(0, 0) != 0, result);
    if (!result.entries.empty()) throw_http_result(400, result);
    if (!apply_system_changes(changes)) throw_http_error(500, "Base.1.10.InternalError");
    answer_success();
    return 0;
}

}  // namespace odata::redfish
