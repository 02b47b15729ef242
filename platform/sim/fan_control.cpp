// The simulated fan control, <root>/nv/bmc/fan.ini: [Fan] Mode=FAN_MODE_*
// (default standard). A new mode sets every fan's reading to its nominal
// speed scaled by the mode's duty against the standard duty, as the fans
// would settle.
#include <algorithm>

#include "platform/libfan.h"
#include "platform/libipmi_sensors.h"
#include "platform/sim/choice_setting.h"
#include "platform/sim/sensor_readings.h"

namespace {

constexpr platform::sim::choice_setting fan_mode = {"/nv/bmc/fan.ini", "Fan.Mode", FAN_MODE_COUNT,
                                                    FAN_MODE_STANDARD};

// Percent, by FAN_MODE_*.
constexpr int mode_duty[FAN_MODE_COUNT] = {60, 100, 40, 75};

bool settle_fan(const St_SensorData& fan, int duty) {
    if (duty == mode_duty[FAN_MODE_STANDARD]) return platform::clear_raw_reading(fan.sensor_number);
    const int raw =
        std::min<int>(fan.max_reading, fan.nominal_reading * duty / mode_duty[FAN_MODE_STANDARD]);
    return platform::set_raw_reading(fan.sensor_number, static_cast<uint8_t>(raw));
}

bool settle_fans(int duty) {
    bool settled = true;
    for (uint16_t row = 0; row < at_St_SensorDataRows; ++row) {
        const St_SensorData& record = at_St_SensorData[row];
        if (record.sensor_type == SENSOR_TYPE_FAN) settled = settle_fan(record, duty) && settled;
    }
    return settled;
}

}  // namespace

extern "C" int PltFAN_GetMode(void) { return platform::sim::read_choice(fan_mode); }

extern "C" int PltFAN_SetMode(int mode) {
    const int written = platform::sim::write_choice(fan_mode, mode);
    if (written != PLT_OK) return written;
    return settle_fans(mode_duty[mode]) ? PLT_OK : PLT_ERR_IO;
}

extern "C" int PltFAN_GetTargetDuty(void) { return mode_duty[PltFAN_GetMode()]; }
