#include "resources/chassis/sdr_sensors.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>

#include "framework/status_object.h"
#include "platform/libipmi.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

bool is_exposed(const St_SensorData& record) {
    return record.record_type == SDR_FULL_SENSOR || record.record_type == SDR_COMPACT_SENSOR;
}

// Which SDR threshold feeds which property.
struct threshold_property {
    const char* name;
    uint8_t readable_bit;
    uint8_t St_SensorThresholds::*raw;
};

constexpr threshold_property threshold_properties[] = {
    {"UpperThresholdCritical", THRESHOLD_UPPER_CRITICAL, &St_SensorThresholds::upper_critical},
    {"UpperThresholdFatal", THRESHOLD_UPPER_NON_RECOVERABLE,
     &St_SensorThresholds::upper_non_recoverable},
    {"LowerThresholdCritical", THRESHOLD_LOWER_CRITICAL, &St_SensorThresholds::lower_critical},
    {"LowerThresholdFatal", THRESHOLD_LOWER_NON_RECOVERABLE,
     &St_SensorThresholds::lower_non_recoverable},
};

// 10 to the power of the 0 to 8 decimal places a 4-bit result exponent
// gives; a table, as pow() would map the math library's tables into every
// service process.
constexpr double decimal_scales[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};

// Whole values are written as integers, the rest to the decimal places the
// result exponent gives (no more digits than the sensor resolves).
boost::json::value rounded(double value, int decimals) {
    const double scale = decimal_scales[std::clamp(decimals, 0, 8)];
    const double result = std::round(value * scale) / scale;
    if (result == std::floor(result)) return static_cast<int64_t>(result);
    return result;
}

}  // namespace

size_t sensor_record_count() {
    const size_t count = at_p_St_GlobalVar ? at_p_St_GlobalVar->sensor_count : 0;
    if (count <= at_St_SensorDataRows) return count;
    console_log("[ERROR] sensor_count %zu exceeds the %u SDR records\n", count,
                static_cast<unsigned>(at_St_SensorDataRows));
    return at_St_SensorDataRows;
}

std::vector<const St_SensorData*> exposed_sensors() {
    const size_t count = sensor_record_count();
    std::vector<const St_SensorData*> records;
    records.reserve(count);
    for (size_t i = 0; i < count; ++i)
        if (is_exposed(at_St_SensorData[i])) records.push_back(&at_St_SensorData[i]);
    return records;
}

const St_SensorData* exposed_sensor(size_t number) {
    const size_t count = sensor_record_count();
    for (size_t i = 0; i < count && number > 0; ++i)
        if (is_exposed(at_St_SensorData[i]) && --number == 0) return &at_St_SensorData[i];
    return nullptr;
}

std::vector<const St_SensorData*> threshold_sensors(uint8_t sensor_type) {
    std::vector<const St_SensorData*> records;
    records.reserve(sensor_record_count());
    for (size_t i = 0; i < sensor_record_count(); ++i) {
        const St_SensorData& record = at_St_SensorData[i];
        if (record.record_type == SDR_FULL_SENSOR && record.sensor_type == sensor_type)
            records.push_back(&record);
    }
    return records;
}

const St_SensorData* find_sensor_named(std::string_view name) {
    const std::vector<const St_SensorData*> records = exposed_sensors();
    auto found = std::find_if(records.begin(), records.end(), [name](const St_SensorData* record) {
        return sensor_name(*record) == name;
    });
    return found == records.end() ? nullptr : *found;
}

std::string sensor_name(const St_SensorData& record) {
    const size_t length = std::min<size_t>(record.id_length, SDR_ID_STRING_MAX);
    return std::string(record.id_string, strnlen(record.id_string, length));
}

boost::json::value raw_to_json(const St_SensorData& record, uint8_t raw, number_form form) {
    const int decimals =
        form == number_form::integer ? 0 : std::max(0, -static_cast<int>(record.k2));
    return rounded(SensorRawToValue(&record, raw), decimals);
}

boost::json::value reading_value(const St_SensorData& record, number_form form) {
    uint8_t raw = 0;
    if (UtilGetSensorReading(record.sensor_number, &raw) != PLT_OK) return nullptr;
    if (record.record_type != SDR_FULL_SENSOR) return raw;
    return raw_to_json(record, raw, form);
}

void add_thresholds(boost::json::object& member, const St_SensorData& record, number_form form) {
    St_SensorThresholds thresholds{};
    if (UtilGetSensorThreshold(record.sensor_number, &thresholds) != PLT_OK) return;
    for (const threshold_property& property : threshold_properties)
        if (thresholds.readable & property.readable_bit)
            member[property.name] = raw_to_json(record, thresholds.*property.raw, form);
}

boost::json::object sensor_status(const St_SensorData& record) {
    return status_object(UtilGetSensorCurrStatus(record.sensor_number, SENSOR_STATUS_HEALTH));
}

}  // namespace odata::redfish
