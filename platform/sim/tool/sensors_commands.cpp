// bmcsim sensors: the SDR's sensors and their readings.
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <iomanip>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>

#include "platform/libipmi_sensors.h"
#include "platform/sim/sdr_repository.h"
#include "platform/sim/sensor_conversion.h"
#include "platform/sim/sensor_events.h"
#include "platform/sim/sensor_readings.h"
#include "platform/sim/tool/areas.h"
#include "platform/sim/tool/health_names.h"

namespace bmcsim {
namespace sensors_commands {

struct unit_name {
    uint8_t unit;
    const char* name;
};

constexpr unit_name unit_names[] = {
    {SENSOR_UNIT_DEGREES_C, "C"},
    {SENSOR_UNIT_VOLTS, "V"},
    {SENSOR_UNIT_RPM, "RPM"},
};

const char* unit_of(const St_SensorData& record) {
    for (const unit_name& each : unit_names)
        if (each.unit == record.unit) return each.name;
    return "";
}

bool is_threshold_sensor(const St_SensorData& record) {
    return record.reading_type == READING_TYPE_THRESHOLD;
}

// A sensor by its name or its number.
const St_SensorData* find_sensor(const std::string& name_or_number) {
    if (const St_SensorData* record = platform::find_sensor_by_name(name_or_number)) return record;
    long long number = 0;
    return parse_number(name_or_number, 0, 0xFF, number)
               ? SensorFindRecord(static_cast<uint8_t>(number))
               : nullptr;
}

std::string reading_text(const St_SensorData& record) {
    uint8_t raw = 0;
    if (UtilGetSensorReading(record.sensor_number, &raw) != PLT_OK) return "na";
    std::ostringstream text;
    if (is_threshold_sensor(record))
        text << SensorRawToValue(&record, raw) << ' ' << unit_of(record);
    else
        text << "0x" << std::hex << std::setw(2) << std::setfill('0') << static_cast<unsigned>(raw);
    return text.str();
}

int list(std::ostream& out) {
    for (std::size_t i = 0; i < platform::sdr_record_count(); ++i) {
        const St_SensorData& record = at_St_SensorData[i];
        out << "0x" << std::hex << std::setw(2) << std::setfill('0')
            << static_cast<unsigned>(record.sensor_number) << std::dec << std::setfill(' ') << " | "
            << std::left << std::setw(18) << record.id_string << std::right << " | "
            << reading_text(record) << " | "
            << health_name(UtilGetSensorCurrStatus(record.sensor_number, SENSOR_STATUS_HEALTH))
            << '\n';
    }
    return exit_ok;
}

bool parse_value(const std::string& text, double& value) {
    char* end = nullptr;
    errno = 0;
    value = std::strtod(text.c_str(), &end);
    return !text.empty() && errno == 0 && end == text.c_str() + text.size();
}

// A raw value, or for threshold sensors a value in their unit (the
// nearest raw value); discrete sensors take their state bits.
bool parse_reading(const St_SensorData& record, const std::string& text, bool raw_value,
                   uint8_t& raw) {
    long long number = 0;
    double value = 0;
    if (raw_value || !is_threshold_sensor(record)) {
        if (!parse_number(text, 0, 0xFF, number)) return false;
        raw = static_cast<uint8_t>(number);
        return true;
    }
    if (!parse_value(text, value)) return false;
    raw = platform::sim::nearest_raw(record, value);
    return true;
}

int store(uint8_t sensor_number, uint8_t raw, std::ostream& err) {
    if (platform::set_sensor_reading(sensor_number, raw)) return exit_ok;
    err << "bmcsim: cannot write " << platform::sensor_readings_file() << '\n';
    return exit_failed;
}

int set(const area& self, const arguments& words, bool raw_value, std::ostream& err) {
    const St_SensorData* record = words.size() == 3 ? find_sensor(words[1]) : nullptr;
    if (!record) {
        if (words.size() == 3) err << "bmcsim: no sensor " << words[1] << '\n';
        return usage(self, err);
    }
    uint8_t raw = 0;
    if (!parse_reading(*record, words[2], raw_value, raw)) return usage(self, err);
    return store(record->sensor_number, raw, err);
}

int get(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const St_SensorData* record = words.size() == 2 ? find_sensor(words[1]) : nullptr;
    if (!record) return usage(self, err);
    out << reading_text(*record) << '\n';
    return exit_ok;
}

int reset(std::ostream& err) {
    if (platform::clear_raw_readings()) return exit_ok;
    err << "bmcsim: cannot write " << platform::sensor_readings_file() << '\n';
    return exit_failed;
}

// Readings that are not set move each second while the host is on (drift
// SEED, 1 when left out), or stay at their nominal values (freeze).
int drift(const area& self, const arguments& words, std::ostream& err) {
    std::optional<uint32_t> seed;
    if (words.front() == "drift") {
        long long number = 1;
        if (words.size() > 2 ||
            (words.size() == 2 && !parse_number(words[1], 0, UINT32_MAX, number)))
            return usage(self, err);
        seed = static_cast<uint32_t>(number);
    } else if (words.size() != 1) {
        return usage(self, err);
    }
    if (platform::set_sensor_drift(seed)) return exit_ok;
    err << "bmcsim: cannot write " << platform::sensor_readings_file() << '\n';
    return exit_failed;
}

int run_sensors(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "list" && words.size() == 1) return list(out);
    if (command == "get") return get(self, words, out, err);
    if (command == "set" || command == "set-raw")
        return set(self, words, command == "set-raw", err);
    if (command == "reset" && words.size() == 1) return reset(err);
    if (command == "drift" || command == "freeze") return drift(self, words, err);
    return usage(self, err);
}

}  // namespace sensors_commands

const area sensors_area = {
    "sensors",
    "list | get SENSOR | set SENSOR VALUE | set-raw SENSOR RAW | reset | drift [SEED] | freeze",
    sensors_commands::run_sensors};

}  // namespace bmcsim
