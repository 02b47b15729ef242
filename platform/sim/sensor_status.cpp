// Readings, threshold states and health of the SDR's sensors. Sensors that
// the host powers have no reading while host power is off.
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "base/input_recording.h"
#include "base/request_epoch.h"
#include "platform/libipmi.h"
#include "platform/libipmi_chassis.h"
#include "platform/libipmi_sensors.h"
#include "platform/sim/sdr_repository.h"
#include "platform/sim/sensor_readings.h"

namespace {

// What the state bits of a discrete sensor mean for its health. A sensor
// with a presence bit that is clear has no health (an empty bay).
struct discrete_severity {
    uint8_t sensor_type;
    uint8_t presence_bit;
    uint8_t warning_bits;
    uint8_t critical_bits;
};

constexpr discrete_severity discrete_severities[] = {
    {SENSOR_TYPE_POWER_SUPPLY, PS_STATE_PRESENT, PS_STATE_PREDICTIVE_FAILURE,
     PS_STATE_FAILED | PS_STATE_INPUT_LOST},
    {SENSOR_TYPE_PHYSICAL_SECURITY, 0, INTRUSION_STATE_GENERAL, 0},
    {SENSOR_TYPE_MEMORY, 0, MEMORY_STATE_CORRECTABLE_ECC, MEMORY_STATE_UNCORRECTABLE_ECC},
};

struct threshold_check {
    uint8_t bit;
    uint8_t St_SensorThresholds::*limit;
    bool upper;
};

constexpr threshold_check threshold_checks[] = {
    {THRESHOLD_LOWER_NON_CRITICAL, &St_SensorThresholds::lower_non_critical, false},
    {THRESHOLD_LOWER_CRITICAL, &St_SensorThresholds::lower_critical, false},
    {THRESHOLD_LOWER_NON_RECOVERABLE, &St_SensorThresholds::lower_non_recoverable, false},
    {THRESHOLD_UPPER_NON_CRITICAL, &St_SensorThresholds::upper_non_critical, true},
    {THRESHOLD_UPPER_CRITICAL, &St_SensorThresholds::upper_critical, true},
    {THRESHOLD_UPPER_NON_RECOVERABLE, &St_SensorThresholds::upper_non_recoverable, true},
};

constexpr uint8_t critical_thresholds = THRESHOLD_LOWER_CRITICAL | THRESHOLD_LOWER_NON_RECOVERABLE |
                                        THRESHOLD_UPPER_CRITICAL | THRESHOLD_UPPER_NON_RECOVERABLE;
constexpr uint8_t warning_thresholds = THRESHOLD_LOWER_NON_CRITICAL | THRESHOLD_UPPER_NON_CRITICAL;

// What one SDR row works out to under a snapshot, once.
struct worked_out_row {
    bool raw_known = false;
    bool drifted = false;  // its reading follows the second
    uint8_t raw = 0;
    bool health_known = false;
    int health = SENSOR_HEALTH_OK;
};

struct sensor_snapshot {
    std::shared_ptr<const platform::raw_readings> stored = platform::stored_sensor_readings();
    bool host_on = PltCHASSIS_PowerStatus() == 1;
    // Drifting readings follow the clock's second; one for all of them.
    long long second = stored->drift_seed && host_on ? lx_time_get() : 0;
    // By SDR row, made at the first use: readings and health are functions
    // of the three above.
    mutable std::vector<worked_out_row> rows;

    bool same_inputs(const sensor_snapshot& other) const {
        return stored == other.stored && host_on == other.host_on && second == other.second;
    }
    worked_out_row& row_of(const St_SensorData& record) const {
        if (rows.empty()) rows.resize(at_St_SensorDataRows);
        return rows[static_cast<std::size_t>(&record - at_St_SensorData)];
    }
};

// The stored readings, host power and second, read once per request epoch: a
// sensor resource asks for dozens of sensors. Read on every call outside
// the service loop. What was worked out under them stays while they do (a
// system's health asks for every sensor).
const sensor_snapshot& current_snapshot() {
    static std::optional<sensor_snapshot> kept;
    static std::uint64_t kept_epoch = 0;
    const std::uint64_t epoch = platform::request_epoch();
    if (!kept || epoch == 0 || epoch != kept_epoch) {
        sensor_snapshot fresh;
        if (!kept || !fresh.same_inputs(*kept)) kept.emplace(std::move(fresh));
        kept_epoch = epoch;
    }
    return *kept;
}

bool is_threshold_sensor(const St_SensorData& record) {
    return record.reading_type == READING_TYPE_THRESHOLD;
}

bool has_reading(const St_SensorData& record, const sensor_snapshot& snapshot) {
    return (record.flags & SDR_FLAG_HOST_POWERED) == 0 || snapshot.host_on;
}

int crossed_thresholds(const St_SensorData& record, uint8_t raw) {
    double value = SensorRawToValue(&record, raw);
    int bits = 0;
    for (const threshold_check& check : threshold_checks) {
        if ((record.thresholds.readable & check.bit) == 0) continue;
        double limit = SensorRawToValue(&record, record.thresholds.*check.limit);
        if (check.upper ? value >= limit : value <= limit) bits |= check.bit;
    }
    return bits;
}

// A stored reading, else the nominal one, which drifts while the host is on
// and drift is set; a step that would cross a threshold is not taken.
uint8_t worked_out_raw(const St_SensorData& record, const sensor_snapshot& snapshot,
                       bool& follows_second) {
    auto found = snapshot.stored->stored.find(record.sensor_number);
    if (found != snapshot.stored->stored.end()) return found->second;
    const auto& seed = snapshot.stored->drift_seed;
    if (!seed || !snapshot.host_on || !is_threshold_sensor(record)) return record.nominal_reading;
    follows_second = true;
    int drifted =
        record.nominal_reading + platform::drift_step(*seed, record.sensor_number, snapshot.second);
    if (drifted < 0 || drifted > 0xFF) return record.nominal_reading;
    auto raw = static_cast<uint8_t>(drifted);
    // Compared as values: a signed format's raw range wraps.
    double value = SensorRawToValue(&record, raw);
    bool in_range = value >= SensorRawToValue(&record, record.min_reading) &&
                    value <= SensorRawToValue(&record, record.max_reading);
    return in_range && crossed_thresholds(record, raw) == 0 ? raw : record.nominal_reading;
}

// Each use of a drifting reading notes when it expires.
uint8_t current_raw(const St_SensorData& record, const sensor_snapshot& snapshot) {
    worked_out_row& row = snapshot.row_of(record);
    if (!row.raw_known) {
        row.raw = worked_out_raw(record, snapshot, row.drifted);
        row.raw_known = true;
    }
    if (row.drifted) platform::note_input_expiry(snapshot.second + 1);
    return row.raw;
}

int threshold_health(int crossed) {
    if (crossed & critical_thresholds) return SENSOR_HEALTH_CRITICAL;
    return crossed & warning_thresholds ? SENSOR_HEALTH_WARNING : SENSOR_HEALTH_OK;
}

int discrete_health(const St_SensorData& record, uint8_t state) {
    for (const discrete_severity& severity : discrete_severities) {
        if (severity.sensor_type != record.sensor_type) continue;
        if (severity.presence_bit != 0 && (state & severity.presence_bit) == 0)
            return SENSOR_HEALTH_UNAVAILABLE;
        if (state & severity.critical_bits) return SENSOR_HEALTH_CRITICAL;
        return state & severity.warning_bits ? SENSOR_HEALTH_WARNING : SENSOR_HEALTH_OK;
    }
    return SENSOR_HEALTH_OK;
}

int state_bits(const St_SensorData& record, uint8_t raw) {
    return is_threshold_sensor(record) ? crossed_thresholds(record, raw) : raw;
}

int sensor_health(const St_SensorData& record, const sensor_snapshot& snapshot) {
    if (!has_reading(record, snapshot)) return SENSOR_HEALTH_UNAVAILABLE;
    uint8_t raw = current_raw(record, snapshot);
    worked_out_row& row = snapshot.row_of(record);
    if (!row.health_known) {
        row.health = is_threshold_sensor(record) ? threshold_health(crossed_thresholds(record, raw))
                                                 : discrete_health(record, raw);
        row.health_known = true;
    }
    return row.health;
}

// The worst health of the chosen sensors; no reading counts as OK.
int worst_health(bool (*chosen)(const St_SensorData&)) {
    const sensor_snapshot& snapshot = current_snapshot();
    int worst = SENSOR_HEALTH_OK;
    for (std::size_t i = 0; i < platform::sdr_record_count(); ++i) {
        const St_SensorData& record = at_St_SensorData[i];
        if (chosen(record)) {
            int health = sensor_health(record, snapshot);
            worst = health > worst ? health : worst;
        }
    }
    return worst;
}

bool any_sensor(const St_SensorData&) { return true; }

bool memory_sensor(const St_SensorData& record) {
    return record.entity_id == ENTITY_MEMORY_DEVICE &&
           (record.sensor_type == SENSOR_TYPE_MEMORY ||
            record.sensor_type == SENSOR_TYPE_TEMPERATURE);
}

bool memory_state_sensor(const St_SensorData& record) {
    return record.sensor_type == SENSOR_TYPE_MEMORY;
}

}  // namespace

extern "C" int UtilGetSensorReading(uint8_t sensor_number, uint8_t* raw) {
    if (!raw) return PLT_ERR_ARGUMENT;
    const St_SensorData* record = SensorFindRecord(sensor_number);
    if (!record) return PLT_ERR_NOT_FOUND;
    const sensor_snapshot& snapshot = current_snapshot();
    if (!has_reading(*record, snapshot)) return PLT_ERR_UNAVAILABLE;
    *raw = current_raw(*record, snapshot);
    return PLT_OK;
}

extern "C" int UtilGetSensorThreshold(uint8_t sensor_number, St_SensorThresholds* thresholds) {
    if (!thresholds) return PLT_ERR_ARGUMENT;
    const St_SensorData* record = SensorFindRecord(sensor_number);
    if (!record || !is_threshold_sensor(*record)) return PLT_ERR_NOT_FOUND;
    *thresholds = record->thresholds;
    return PLT_OK;
}

extern "C" int UtilGetSensorCurrStatus(uint8_t sensor_number, int form) {
    const St_SensorData* record = SensorFindRecord(sensor_number);
    if (!record) return PLT_ERR_NOT_FOUND;
    const sensor_snapshot& snapshot = current_snapshot();
    if (form == SENSOR_STATUS_HEALTH) return sensor_health(*record, snapshot);
    if (form != SENSOR_STATUS_STATE_BITS) return PLT_ERR_ARGUMENT;
    if (!has_reading(*record, snapshot)) return PLT_ERR_UNAVAILABLE;
    return state_bits(*record, current_raw(*record, snapshot));
}

extern "C" int UtilGetSensorTotalStatus(void) { return worst_health(any_sensor); }

extern "C" int UtilCheckAllMemHealthAndTemp(void) { return worst_health(memory_sensor); }

extern "C" int UtilCheckAllMemHealth(void) { return worst_health(memory_state_sensor); }
