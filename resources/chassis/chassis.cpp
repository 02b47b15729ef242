#include "resources/chassis/chassis.h"

#include <cstdio>
#include <iostream>

#include "framework/device_uuid.h"
#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libipmi_sensors.h"
#include "platform/libipmi_users.h"
#include "resources/chassis/chassis_fru.h"
#include "resources/chassis/chassis_patch.h"
#include "resources/chassis/chassis_type.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/chassis/indicator_led.h"
#include "resources/chassis/physical_security.h"
#include "resources/chassis/power_state.h"

namespace odata::redfish {
namespace {

constexpr const char* resource_links[][2] = {
    {"Power", power_uri},
    {"Thermal", thermal_uri},
    {"PowerSubsystem", power_subsystem_uri},
    {"ThermalSubsystem", thermal_subsystem_uri},
    {"EnvironmentMetrics", environment_metrics_uri},
    {"PCIeDevices", pcie_devices_uri},
    {"NetworkAdapters", network_adapters_uri},
    {"PCIeSlots", "/redfish/v1/Chassis/1/PCIeSlots"},
    {"Sensors", sensors_uri},
    {"Controls", controls_uri},
    {"Memory", "/redfish/v1/Systems/1/Memory"},
};

// "%#x": "0" for zero, "0xa5c" otherwise.
std::string board_id_text(uint32_t board_id) {
    char text[16];
    std::snprintf(text, sizeof text, "%#x", board_id);
    return text;
}

boost::json::object oem_object(const std::optional<chassis_fru>& fru) {
    boost::json::object tarnwright({{"@odata.type", "#TwrChassisExtensions.v1_0_0.Chassis"}},
                                   answer_storage());
    if (fru) tarnwright["BoardSerialNumber"] = fru->board_serial_number;
    tarnwright["GUID"] = device_uuid_text();
    if (fru) tarnwright["BoardID"] = board_id_text(fru->board_id);
    return boost::json::object({{"Tarnwright", std::move(tarnwright)}}, answer_storage());
}

}  // namespace

chassis::chassis(request_context& context)
    : redfish(context, "Chassis", std::string(schema_file_of("Chassis").version),
              "Computer System Chassis", chassis_uri) {}

int chassis::get(request_context&) {
    set_common_properties();
    const std::optional<chassis_fru> fru = read_chassis_fru();
    set("ChassisType", chassis_type_name(fru ? fru->chassis_type : 0));
    if (fru) {
        set("Manufacturer", fru->manufacturer);
        set("Model", fru->model);
        set("SKU", fru->sku);
        set("SerialNumber", fru->serial_number);
        set("PartNumber", fru->part_number);
        set("AssetTag", fru->asset_tag);
    }
    set("Status", status_object(SENSOR_HEALTH_OK));
    set("PowerState", power_state_text());
    set("IndicatorLED", indicator_led_state());
    set("LocationIndicatorActive", std::string_view(indicator_led_state()) != "Off");
    if (boost::json::value security = physical_security(); !security.is_null())
        set("PhysicalSecurity", security);
    for (const auto& [name, uri] : resource_links) set(name, link(uri));
    set("Links", {{"ComputerSystems", link_array(host_system_uri)},
                  {"ManagedBy", link_array(bmc_manager_uri)},
                  {"ManagersInChassis", link_array(bmc_manager_uri)}});
    set("Oem", oem_object(fru));
    return 0;
}

int chassis::patch(request_context& context) {
    const boost::json::value body = context.body_json();
    result_record result = general_error();
    const chassis_changes changes =
        read_chassis_changes(request_object(body), GetSetSysLockdownEnable(0, 0) != 0, result);
    if (!result.entries.empty()) throw_http_result(400, result);
    const std::string refused = apply_chassis_changes(changes);
    if (!refused.empty()) throw_http_error(400, "Base.1.10.InternalError", {}, {"/" + refused});
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
