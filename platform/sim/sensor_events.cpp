#include "platform/sim/sensor_events.h"

#include <cstdio>
#include <string>

#include "platform/libipmi.h"
#include "platform/libipmi_sensors.h"
#include "platform/sim/logged_alerts.h"
#include "platform/sim/sensor_readings.h"

namespace platform {
namespace {

int health_event(int health) {
    if (health == SENSOR_HEALTH_CRITICAL) return sim::event_sensor_critical;
    return health == SENSOR_HEALTH_WARNING ? sim::event_sensor_warning : sim::event_sensor_normal;
}

std::string crossing_text(const St_SensorData& record, uint8_t raw) {
    char value[32];
    std::snprintf(value, sizeof value, "%g", SensorRawToValue(&record, raw));
    return std::string(record.id_string) + ", " + value;
}

}  // namespace

bool set_sensor_reading(uint8_t sensor_number, uint8_t raw) {
    const St_SensorData* record = SensorFindRecord(sensor_number);
    const int before = UtilGetSensorCurrStatus(sensor_number, SENSOR_STATUS_HEALTH);
    if (!set_raw_reading(sensor_number, raw)) return false;
    const int after = UtilGetSensorCurrStatus(sensor_number, SENSOR_STATUS_HEALTH);
    // No reading (host off) is no crossing either way.
    if (record && record->reading_type == READING_TYPE_THRESHOLD && before != after &&
        before != SENSOR_HEALTH_UNAVAILABLE && after != SENSOR_HEALTH_UNAVAILABLE)
        LibSaveSysEvtLog(health_event(after), sensor_number, crossing_text(*record, raw).c_str());
    return true;
}

}  // namespace platform
