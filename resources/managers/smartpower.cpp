// SmartPower: what the host's power does when AC returns, and the cap on
// its consumption.
#include "frontend/response_headers.h"
#include "platform/libipmi_chassis.h"
#include "platform/libipmi_power.h"
#include "resources/managers/oem_settings.h"
#include "resources/managers/setting_readers.h"

namespace odata::redfish {
namespace {

// By POWER_RESTORE_* and POWER_LIMIT_*.
constexpr std::string_view restore_policies[] = {"AlwaysOff", "LastState", "AlwaysOn"};
constexpr std::string_view limit_exceptions[] = {"NoAction", "HardPowerOff"};

struct power_changes {
    std::optional<int> restore_policy;
    std::optional<int> limit_watts;
    std::optional<int> limit_exception;
};

St_PowerControl power_control() {
    St_PowerControl control{};
    if (PltPSU_GetPowerControl(&control) != PLT_OK) require_platform_ok(PLT_ERR_IO, "SmartPower");
    return control;
}

// Up to what the supplies deliver; 0 lifts the cap.
void read_limit_watts(const request_member& member, power_changes& changes, result_record& result) {
    const long capacity = power_control().capacity_watts;
    if (const std::optional<long> watts =
            require_integer_in_range(member.value, 0, capacity, member.path, result))
        changes.limit_watts = static_cast<int>(*watts);
}

constexpr patch_property<power_changes> power_limit_properties[] = {
    {"PowerRestorePolicy", read_choice<&power_changes::restore_policy, restore_policies>},
    {"PowerLimitWatts", read_limit_watts},
    {"PowerLimitException", read_choice<&power_changes::limit_exception, limit_exceptions>},
    {"PowerCapacityWatts", read_only<power_changes>},
};

}  // namespace

smartpower::smartpower(request_context& context)
    : oem_setting(context, "TwrSmartPower", "Smart Power", "SmartPower") {}

int smartpower::get(request_context&) {
    const int policy = PltCHASSIS_GetRestorePolicy();
    if (policy < 0 || policy >= static_cast<int>(std::size(restore_policies)))
        require_platform_ok(PLT_ERR_IO, "SmartPower");
    const St_PowerControl control = power_control();
    set_heading("Power restore policy and power capping of the host");
    set("PowerRestorePolicy", restore_policies[policy]);
    set("PowerLimitWatts", control.limit_watts);
    set("PowerLimitException", limit_exceptions[control.limit_exception]);
    set("PowerCapacityWatts", control.capacity_watts);
    return 0;
}

int smartpower::patch(request_context& context) {
    const power_changes changes = read_settings_patch(power_limit_properties, context.body_json());
    if (changes.restore_policy)
        require_platform_ok(PltCHASSIS_SetRestorePolicy(*changes.restore_policy), "SmartPower");
    if (changes.limit_watts || changes.limit_exception) {
        const St_PowerControl control = power_control();
        require_platform_ok(
            PltPSU_SetPowerLimit(
                changes.limit_watts.value_or(control.limit_watts),
                static_cast<uint8_t>(changes.limit_exception.value_or(control.limit_exception))),
            "SmartPower");
    }
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
