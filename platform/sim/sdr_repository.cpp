#include "platform/sim/sdr_repository.h"

#include <cstdint>

#include "platform/sim/sensor_conversion.h"

namespace {

struct identity {
    uint8_t number;
    const char* name;
    uint8_t sensor_type;
    uint8_t entity_id;
    uint8_t entity_instance;
    uint8_t flags;
};

struct scale {
    uint8_t unit;
    uint8_t format;
    int16_t m;
    int16_t b;
    int8_t k1;
    int8_t k2;
};

// Threshold values in the sensor's unit; only those in readable exist.
struct limits {
    uint8_t readable;
    double lower_non_recoverable, lower_critical, lower_non_critical;
    double upper_non_critical, upper_critical, upper_non_recoverable;
};

constexpr uint8_t all_lower =
    THRESHOLD_LOWER_NON_CRITICAL | THRESHOLD_LOWER_CRITICAL | THRESHOLD_LOWER_NON_RECOVERABLE;
constexpr uint8_t all_upper =
    THRESHOLD_UPPER_NON_CRITICAL | THRESHOLD_UPPER_CRITICAL | THRESHOLD_UPPER_NON_RECOVERABLE;

constexpr limits upper(double non_critical, double critical, double non_recoverable) {
    return {all_upper, 0, 0, 0, non_critical, critical, non_recoverable};
}

constexpr limits lower(double non_recoverable, double critical, double non_critical) {
    return {all_lower, non_recoverable, critical, non_critical, 0, 0, 0};
}

constexpr limits both(limits low, limits high) {
    return {all_lower | all_upper,     low.lower_non_recoverable, low.lower_critical,
            low.lower_non_critical,    high.upper_non_critical,   high.upper_critical,
            high.upper_non_recoverable};
}

constexpr St_SensorData named(identity id, uint8_t record_type, uint8_t reading_type) {
    St_SensorData record{};
    record.record_type = record_type;
    record.sensor_number = id.number;
    record.entity_id = id.entity_id;
    record.entity_instance = id.entity_instance;
    record.sensor_type = id.sensor_type;
    record.reading_type = reading_type;
    record.flags = id.flags;
    uint8_t length = 0;
    while (length < SDR_ID_STRING_MAX && id.name[length] != '\0') {
        record.id_string[length] = id.name[length];
        ++length;
    }
    record.id_length = length;
    return record;
}

constexpr St_SensorData threshold_sensor(identity id, scale factors, double nominal,
                                         limits bounds) {
    St_SensorData record = named(id, SDR_FULL_SENSOR, READING_TYPE_THRESHOLD);
    record.unit = factors.unit;
    record.analog_format = factors.format;
    record.m = factors.m;
    record.b = factors.b;
    record.k1 = factors.k1;
    record.k2 = factors.k2;
    bool is_signed = factors.format == ANALOG_TWOS_COMPLEMENT;
    record.min_reading = is_signed ? 0x80 : 0x00;
    record.max_reading = is_signed ? 0x7F : 0xFF;
    using platform::sim::nearest_raw;
    record.nominal_reading = nearest_raw(record, nominal);
    record.thresholds = {bounds.readable,
                         nearest_raw(record, bounds.lower_non_recoverable),
                         nearest_raw(record, bounds.lower_critical),
                         nearest_raw(record, bounds.lower_non_critical),
                         nearest_raw(record, bounds.upper_non_critical),
                         nearest_raw(record, bounds.upper_critical),
                         nearest_raw(record, bounds.upper_non_recoverable)};
    return record;
}

constexpr St_SensorData state_sensor(identity id, uint8_t nominal_state) {
    St_SensorData record = named(id, SDR_COMPACT_SENSOR, READING_TYPE_SENSOR_SPECIFIC);
    record.nominal_reading = nominal_state;
    return record;
}

constexpr uint8_t host = SDR_FLAG_HOST_POWERED;
constexpr uint8_t standby = 0;

constexpr scale celsius{SENSOR_UNIT_DEGREES_C, ANALOG_TWOS_COMPLEMENT, 1, 0, 0, 0};
constexpr scale rpm{SENSOR_UNIT_RPM, ANALOG_UNSIGNED, 100, 0, 0, 0};

constexpr scale volts(int16_t m, int16_t b, int8_t k1, int8_t k2) {
    return {SENSOR_UNIT_VOLTS, ANALOG_UNSIGNED, m, b, k1, k2};
}

constexpr identity temperature(uint8_t number, const char* name, uint8_t entity, uint8_t instance,
                               uint8_t flags) {
    return {number, name, SENSOR_TYPE_TEMPERATURE, entity, instance, flags};
}

constexpr identity fan(uint8_t number, const char* name, uint8_t instance) {
    return {number, name, SENSOR_TYPE_FAN, ENTITY_FAN, instance, host};
}

constexpr identity voltage(uint8_t number, const char* name, uint8_t entity, uint8_t instance,
                           uint8_t flags) {
    return {number, name, SENSOR_TYPE_VOLTAGE, entity, instance, flags};
}

constexpr limits cpu_temperature = upper(85, 90, 95);
constexpr limits dimm_temperature = upper(80, 85, 90);
constexpr limits fan_speed = lower(300, 500, 700);
constexpr scale rail_12v = volts(6, 0, 0, -2);
constexpr scale rail_5v = volts(26, 0, 0, -3);
constexpr scale rail_3v3 = volts(17, 0, 0, -3);
constexpr scale battery = volts(16, 0, 0, -3);
constexpr scale core = volts(8, 0, 0, -3);
constexpr scale dimm_rail = volts(4, 5, 2, -3);

}  // namespace

extern "C" const St_SensorData at_St_SensorData[] = {
    threshold_sensor(temperature(0x01, "CPU1 Temp", ENTITY_PROCESSOR, 1, host), celsius, 45,
                     cpu_temperature),
    threshold_sensor(temperature(0x02, "CPU2 Temp", ENTITY_PROCESSOR, 2, host), celsius, 47,
                     cpu_temperature),
    threshold_sensor(temperature(0x03, "PCH Temp", ENTITY_SYSTEM_BOARD, 1, standby), celsius, 48,
                     upper(90, 95, 100)),
    threshold_sensor(temperature(0x04, "System Temp", ENTITY_SYSTEM_BOARD, 1, standby), celsius, 32,
                     both(lower(-5, 0, 5), upper(80, 85, 90))),
    threshold_sensor(temperature(0x05, "Inlet Temp", ENTITY_AIR_INLET, 1, standby), celsius, 24,
                     both(lower(-5, 0, 5), upper(40, 45, 50))),
    threshold_sensor(temperature(0x06, "OCP_NIC Temp", ENTITY_ADD_IN_CARD, 1, host), celsius, 55,
                     upper(95, 100, 105)),
    threshold_sensor(temperature(0x07, "HDD Temp", ENTITY_DISK_BAY, 1, host), celsius, 35,
                     upper(55, 60, 65)),
    threshold_sensor(temperature(0x10, "CPU1_DIMM_A1 Temp", ENTITY_MEMORY_DEVICE, 1, host), celsius,
                     38, dimm_temperature),
    threshold_sensor(temperature(0x11, "CPU1_DIMM_B1 Temp", ENTITY_MEMORY_DEVICE, 2, host), celsius,
                     39, dimm_temperature),
    threshold_sensor(temperature(0x12, "CPU2_DIMM_A1 Temp", ENTITY_MEMORY_DEVICE, 3, host), celsius,
                     40, dimm_temperature),
    threshold_sensor(temperature(0x13, "CPU2_DIMM_B1 Temp", ENTITY_MEMORY_DEVICE, 4, host), celsius,
                     38, dimm_temperature),
    threshold_sensor(fan(0x41, "FAN1", 1), rpm, 5600, fan_speed),
    threshold_sensor(fan(0x42, "FAN2", 2), rpm, 5700, fan_speed),
    threshold_sensor(fan(0x43, "FAN3", 3), rpm, 5500, fan_speed),
    threshold_sensor(fan(0x44, "FAN4", 4), rpm, 5600, fan_speed),
    threshold_sensor(voltage(0x30, "12V", ENTITY_SYSTEM_BOARD, 1, standby), rail_12v, 12.0,
                     both(lower(10.2, 10.8, 11.4), upper(12.6, 13.2, 13.8))),
    threshold_sensor(voltage(0x31, "5VCC", ENTITY_SYSTEM_BOARD, 1, standby), rail_5v, 5.0,
                     both(lower(4.25, 4.5, 4.75), upper(5.25, 5.5, 5.75))),
    threshold_sensor(voltage(0x32, "3.3VCC", ENTITY_SYSTEM_BOARD, 1, standby), rail_3v3, 3.3,
                     both(lower(2.8, 2.97, 3.14), upper(3.46, 3.63, 3.8))),
    threshold_sensor(voltage(0x33, "VBAT", ENTITY_SYSTEM_BOARD, 1, standby), battery, 3.04,
                     both(lower(2.0, 2.5, 2.7), upper(3.4, 3.5, 3.6))),
    threshold_sensor(voltage(0x34, "Vcpu1", ENTITY_PROCESSOR, 1, host), core, 1.8,
                     both(lower(1.5, 1.6, 1.7), upper(1.9, 1.96, 2.0))),
    threshold_sensor(voltage(0x35, "Vcpu2", ENTITY_PROCESSOR, 2, host), core, 1.8,
                     both(lower(1.5, 1.6, 1.7), upper(1.9, 1.96, 2.0))),
    threshold_sensor(voltage(0x36, "VDimmP1ABC", ENTITY_MEMORY_DEVICE, 1, host), dimm_rail, 1.2,
                     both(lower(1.08, 1.1, 1.14), upper(1.26, 1.3, 1.32))),
    threshold_sensor(voltage(0x37, "VDimmP2ABC", ENTITY_MEMORY_DEVICE, 2, host), dimm_rail, 1.2,
                     both(lower(1.08, 1.1, 1.14), upper(1.26, 1.3, 1.32))),
    state_sensor({0xC8, "PS1 Status", SENSOR_TYPE_POWER_SUPPLY, ENTITY_POWER_SUPPLY, 1, standby},
                 PS_STATE_PRESENT),
    state_sensor({0xC9, "PS2 Status", SENSOR_TYPE_POWER_SUPPLY, ENTITY_POWER_SUPPLY, 2, standby},
                 PS_STATE_PRESENT),
    state_sensor({0xAA, "Hardware Intrusion", SENSOR_TYPE_PHYSICAL_SECURITY, ENTITY_SYSTEM_CHASSIS,
                  1, standby},
                 0),
    state_sensor({0xAB, "Memory ECC", SENSOR_TYPE_MEMORY, ENTITY_MEMORY_DEVICE, 1, host}, 0),
};

extern "C" const uint16_t at_St_SensorDataRows =
    sizeof at_St_SensorData / sizeof at_St_SensorData[0];

namespace platform {

std::size_t sdr_record_count() { return at_St_SensorDataRows; }

const St_SensorData* find_sensor_by_name(std::string_view name) {
    for (std::size_t i = 0; i < sdr_record_count(); ++i)
        if (name == std::string_view(at_St_SensorData[i].id_string, at_St_SensorData[i].id_length))
            return &at_St_SensorData[i];
    return nullptr;
}

}  // namespace platform

extern "C" const St_SensorData* SensorFindRecord(uint8_t sensor_number) {
    for (std::size_t i = 0; i < platform::sdr_record_count(); ++i)
        if (at_St_SensorData[i].sensor_number == sensor_number) return &at_St_SensorData[i];
    return nullptr;
}
