#include "resources/chassis/chassis_subsystems.h"

#include <optional>

#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "platform/libipmi_power.h"
#include "platform/libipmi_sensors.h"
#include "platform/libweb.h"
#include "resources/chassis/chassis_uris.h"

namespace odata::redfish {
namespace {

std::optional<St_PowerControl> read_power_control(const char* resource) {
    St_PowerControl control{};
    if (PltPSU_GetPowerControl(&control) == PLT_OK) return control;
    console_log("[ERROR] %s: no power control data\n", resource);
    return std::nullopt;
}

}  // namespace

powersubsystem::powersubsystem(request_context& context)
    : redfish(context, "PowerSubsystem", std::string(schema_file_of("PowerSubsystem").version),
              "Power Subsystem", power_subsystem_uri) {}

int powersubsystem::get(request_context&) {
    set_common_properties();
    set("Description", "The power supplies of the chassis");
    if (const auto control = read_power_control("PowerSubsystem"))
        set("CapacityWatts", control->capacity_watts);
    set("Status", status_object(SENSOR_HEALTH_OK));
    return 0;
}

thermalsubsystem::thermalsubsystem(request_context& context)
    : redfish(context, "ThermalSubsystem", std::string(schema_file_of("ThermalSubsystem").version),
              "Thermal Subsystem", thermal_subsystem_uri) {}

int thermalsubsystem::get(request_context&) {
    set_common_properties();
    set("Description", "The fans and temperature sensors of the chassis");
    set("Status", status_object(SENSOR_HEALTH_OK));
    return 0;
}

environmentmetrics::environmentmetrics(request_context& context)
    : redfish(context, "EnvironmentMetrics",
              std::string(schema_file_of("EnvironmentMetrics").version),
              "Chassis Environment Metrics", environment_metrics_uri) {}

int environmentmetrics::get(request_context&) {
    set_common_properties();
    if (const auto control = read_power_control("EnvironmentMetrics"))
        set("PowerWatts", {{"Reading", control->consumed_watts}});
    return 0;
}

}  // namespace odata::redfish
