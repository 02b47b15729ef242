#include "resources/systems/system_health.h"

#include <algorithm>
#include <string_view>

#include "platform/libipmi.h"
#include "platform/libipmi_sensors.h"
#include "resources/chassis/sdr_sensors.h"

namespace odata::redfish {

int system_health_code() {
    const int code = UtilGetSensorTotalStatus();
    return code == SENSOR_HEALTH_OK ? UtilCheckAllMemHealthAndTemp() : code;
}

namespace {

// "CPU1 Temp", "CPU2 DTS Temp": the processors' temperature sensors.
bool processor_temperature(std::string_view id) {
    constexpr std::string_view prefix = "CPU", suffix = "Temp";
    return id.size() >= prefix.size() + suffix.size() && id.substr(0, prefix.size()) == prefix &&
           id.substr(id.size() - suffix.size()) == suffix;
}

}  // namespace

int processor_health_code() {
    int worst = SENSOR_HEALTH_OK;
    for (size_t i = 0; i < sensor_record_count(); ++i) {
        const St_SensorData& record = at_St_SensorData[i];
        if (!processor_temperature(record.id_string)) continue;
        worst =
            std::max(worst, UtilGetSensorCurrStatus(record.sensor_number, SENSOR_STATUS_HEALTH));
    }
    return worst;
}

}  // namespace odata::redfish
