// GCC 12 reports a false maybe-uninitialized inside libstdc++'s <regex>.
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"

#include "resources/systems/system_health.h"

#include <algorithm>
#include <regex>

#include "platform/libipmi.h"
#include "platform/libipmi_sensors.h"
#include "resources/chassis/sdr_sensors.h"

namespace odata::redfish {

int system_health_code() {
    const int code = UtilGetSensorTotalStatus();
    return code == SENSOR_HEALTH_OK ? UtilCheckAllMemHealthAndTemp() : code;
}

int processor_health_code() {
    static const std::regex processor_temperature("CPU.*Temp");
    int worst = SENSOR_HEALTH_OK;
    for (size_t i = 0; i < sensor_record_count(); ++i) {
        const St_SensorData& record = at_St_SensorData[i];
        if (!std::regex_match(record.id_string, processor_temperature)) continue;
        worst =
            std::max(worst, UtilGetSensorCurrStatus(record.sensor_number, SENSOR_STATUS_HEALTH));
    }
    return worst;
}

}  // namespace odata::redfish
