// The SDR repository and sensor readings (the BMC's libipmi.so). Return
// codes are those of plt_result.h.
//
// The repository is the table at_St_SensorData, in memory in every process,
// with at_p_St_GlobalVar->sensor_count records. Threshold sensors have full
// records (SDR_FULL_SENSOR) with IPMI linear conversion factors; discrete
// sensors have compact records (SDR_COMPACT_SENSOR) and read as state bits.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

// Record kinds (SDR record type byte).
enum { SDR_FULL_SENSOR = 0x01, SDR_COMPACT_SENSOR = 0x02 };

// IPMI sensor types of the repository.
enum {
    SENSOR_TYPE_TEMPERATURE = 0x01,
    SENSOR_TYPE_VOLTAGE = 0x02,
    SENSOR_TYPE_FAN = 0x04,
    SENSOR_TYPE_PHYSICAL_SECURITY = 0x05,  // state bit 0: chassis intrusion
    SENSOR_TYPE_POWER_SUPPLY = 0x08,       // state bits: PS_STATE_*
    SENSOR_TYPE_MEMORY = 0x0C,             // state bits: MEMORY_STATE_*
};

// Reading types (IPMI event/reading type codes).
enum { READING_TYPE_THRESHOLD = 0x01, READING_TYPE_SENSOR_SPECIFIC = 0x6F };

// Base units (IPMI unit type codes) of full records.
enum { SENSOR_UNIT_DEGREES_C = 1, SENSOR_UNIT_VOLTS = 4, SENSOR_UNIT_RPM = 18 };

// Entity ids (IPMI) used by the repository.
enum {
    ENTITY_PROCESSOR = 0x03,
    ENTITY_DISK_BAY = 0x04,
    ENTITY_SYSTEM_BOARD = 0x07,
    ENTITY_POWER_SUPPLY = 0x0A,
    ENTITY_ADD_IN_CARD = 0x0B,
    ENTITY_SYSTEM_CHASSIS = 0x17,
    ENTITY_FAN = 0x1D,
    ENTITY_MEMORY_DEVICE = 0x20,
    ENTITY_AIR_INLET = 0x37,
};

// Raw reading formats of full records: unsigned, or two's complement.
enum { ANALOG_UNSIGNED = 0, ANALOG_TWOS_COMPLEMENT = 2 };

// Discrete state bits (sensor-specific offsets).
enum {
    PS_STATE_PRESENT = 0x01,
    PS_STATE_FAILED = 0x02,
    PS_STATE_PREDICTIVE_FAILURE = 0x04,
    PS_STATE_INPUT_LOST = 0x08,
    INTRUSION_STATE_GENERAL = 0x01,
    MEMORY_STATE_CORRECTABLE_ECC = 0x01,
    MEMORY_STATE_UNCORRECTABLE_ECC = 0x02,
};

// Bits of St_SensorThresholds.readable and of the threshold state (IPMI
// "Get Sensor Reading" byte 3): which thresholds exist / are crossed.
enum {
    THRESHOLD_LOWER_NON_CRITICAL = 0x01,
    THRESHOLD_LOWER_CRITICAL = 0x02,
    THRESHOLD_LOWER_NON_RECOVERABLE = 0x04,
    THRESHOLD_UPPER_NON_CRITICAL = 0x08,
    THRESHOLD_UPPER_CRITICAL = 0x10,
    THRESHOLD_UPPER_NON_RECOVERABLE = 0x20,
};

// Flags of a record.
enum { SDR_FLAG_HOST_POWERED = 0x01 };  // no reading while host power is off

enum { SDR_ID_STRING_MAX = 32 };

struct St_SensorThresholds {
    uint8_t readable;               // THRESHOLD_* bits of the thresholds that exist
    uint8_t lower_non_recoverable;  // raw values, same format as the reading
    uint8_t lower_critical;
    uint8_t lower_non_critical;
    uint8_t upper_non_critical;
    uint8_t upper_critical;
    uint8_t upper_non_recoverable;
};

// One fixed-size SDR record. Conversion fields, reading range and
// thresholds are meaningful in full records only.
struct St_SensorData {
    uint16_t record_id;
    uint8_t record_type;  // SDR_FULL_SENSOR or SDR_COMPACT_SENSOR
    uint8_t sensor_number;
    uint8_t entity_id;  // ENTITY_*
    uint8_t entity_instance;
    uint8_t sensor_type;    // SENSOR_TYPE_*
    uint8_t reading_type;   // READING_TYPE_*
    uint8_t flags;          // SDR_FLAG_*
    uint8_t unit;           // SENSOR_UNIT_*
    uint8_t analog_format;  // ANALOG_*
    int16_t m;              // value = (m * raw + b * 10^k1) * 10^k2
    int16_t b;
    int8_t k1;                // B exponent
    int8_t k2;                // result exponent
    uint8_t nominal_reading;  // raw
    uint8_t min_reading;      // raw bounds of the reading range
    uint8_t max_reading;
    St_SensorThresholds thresholds;
    uint8_t id_length;                      // characters of id_string
    char id_string[SDR_ID_STRING_MAX + 1];  // NUL-terminated as well
};

extern const St_SensorData at_St_SensorData[];
// The rows at_St_SensorData holds: a sensor_count above it is damaged
// shared state, never an index.
extern const uint16_t at_St_SensorDataRows;

// Health codes of sensors and of groups of sensors, worst last.
enum {
    SENSOR_HEALTH_UNAVAILABLE = 0,  // no reading (host off); counts as normal in groups
    SENSOR_HEALTH_OK = 1,
    SENSOR_HEALTH_WARNING = 2,   // a non-critical threshold crossed, or a warning state
    SENSOR_HEALTH_CRITICAL = 3,  // a critical or non-recoverable threshold, or a failure state
};

// Forms of UtilGetSensorCurrStatus.
enum {
    SENSOR_STATUS_STATE_BITS =
        1,                     // threshold sensors: THRESHOLD_* bits crossed; discrete: state bits
    SENSOR_STATUS_HEALTH = 2,  // SENSOR_HEALTH_*
};

// The raw reading of a sensor into *raw: threshold sensors a value to
// convert (SensorRawToValue), discrete sensors their state bits.
// PLT_ERR_NOT_FOUND for an unknown sensor, PLT_ERR_UNAVAILABLE while the
// sensor has no reading.
int UtilGetSensorReading(uint8_t sensor_number, uint8_t* raw);

// The thresholds of a threshold sensor; PLT_ERR_NOT_FOUND for an unknown or
// discrete sensor.
int UtilGetSensorThreshold(uint8_t sensor_number, St_SensorThresholds* thresholds);

// The sensor's present state in the given SENSOR_STATUS_* form (>= 0), or a
// negative PLT_ERR_* code. A sensor without reading gives
// SENSOR_HEALTH_UNAVAILABLE in the health form, PLT_ERR_UNAVAILABLE in the other.
int UtilGetSensorCurrStatus(uint8_t sensor_number, int form);

// The worst SENSOR_HEALTH_* of all sensors (OK when none is worse).
int UtilGetSensorTotalStatus(void);
// The worst SENSOR_HEALTH_* of the memory sensors (memory state sensors and
// memory temperatures).
int UtilCheckAllMemHealthAndTemp(void);
// The worst SENSOR_HEALTH_* of the memory state sensors only.
int UtilCheckAllMemHealth(void);

// Re-arms a discrete sensor: its latched state bits (e.g. a chassis
// intrusion) go back to the sensor's normal state. PLT_ERR_NOT_FOUND for an
// unknown or threshold sensor.
int UtilRearmSensorEvents(uint8_t sensor_number);

// IPMI linear conversion: (m * raw + b * 10^k1) * 10^k2.
double cal_val(int raw, int m, int b, int k1, int k2);

// A full record's raw value (reading or threshold) in its unit, taking the
// record's raw format (signed or not) into account.
double SensorRawToValue(const St_SensorData* record, uint8_t raw);

// The record of a sensor number, null when there is none.
const St_SensorData* SensorFindRecord(uint8_t sensor_number);

}  // extern "C"
