// FanMode: the fan control mode and the duty it sets.
#include "frontend/response_headers.h"
#include "platform/libfan.h"
#include "resources/managers/oem_settings.h"
#include "resources/managers/setting_readers.h"

namespace odata::redfish {
namespace {

// By FAN_MODE_*.
constexpr std::string_view fan_modes[] = {"Standard", "FullSpeed", "Optimal", "HeavyIO"};

struct fan_changes {
    std::optional<int> mode;
};

constexpr patch_property<fan_changes> fan_mode_properties[] = {
    {"Mode", read_choice<&fan_changes::mode, fan_modes>},
    {"TargetDutyPercent", read_only<fan_changes>},
};

}  // namespace

fanmode::fanmode(request_context& context)
    : oem_setting(context, "TwrFanMode", "Fan Mode", "FanMode") {}

int fanmode::get(request_context&) {
    const int mode = PltFAN_GetMode();
    const int duty = PltFAN_GetTargetDuty();
    if (mode < 0 || mode >= FAN_MODE_COUNT || duty < 0) require_platform_ok(PLT_ERR_IO, "FanMode");
    set_heading("The fan control mode");
    set("Mode", fan_modes[mode]);
    set("TargetDutyPercent", duty);
    return 0;
}

int fanmode::patch(request_context& context) {
    const fan_changes changes = read_settings_patch(fan_mode_properties, context.body_json());
    if (changes.mode) require_platform_ok(PltFAN_SetMode(*changes.mode), "FanMode");
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
