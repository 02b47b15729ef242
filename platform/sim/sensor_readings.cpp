#include "platform/sim/sensor_readings.h"

#include <string>

#include "base/bmc_root.h"
#include "base/file_cache.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace platform {
namespace {

constexpr const char* section = "Readings";
constexpr const char* drift_seed_key = "Drift.Seed";

bool parse_byte(const std::string& text, unsigned long& value) {
    std::size_t used = 0;
    try {
        value = std::stoul(text, &used, 10);
    } catch (const std::exception&) {
        return false;
    }
    return used == text.size() && value <= 0xFF;
}

int parse_readings(raw_readings& readings) {
    pt::ptree tree = sim::read_state_ini(sensor_readings_file());
    if (auto seed = tree.get_optional<uint32_t>(drift_seed_key)) readings.drift_seed = *seed;
    auto entries = tree.get_child_optional(section);
    if (!entries) return PLT_OK;
    for (const auto& [key, value] : *entries) {
        unsigned long number = 0;
        unsigned long raw = 0;
        if (parse_byte(key, number) && parse_byte(value.data(), raw))
            readings.stored[static_cast<uint8_t>(number)] = static_cast<uint8_t>(raw);
    }
    return PLT_OK;
}

}  // namespace

const std::string& sensor_readings_file() {
    static fixed_bmc_path path("/var/bmc/sensors.ini");
    return path.get();
}

std::shared_ptr<const raw_readings> stored_sensor_readings() {
    static file_cache<raw_readings> cache;
    std::shared_ptr<const raw_readings> readings;
    cache.get(sensor_readings_file(), parse_readings, readings);
    return readings;
}

int drift_step(uint32_t seed, uint8_t sensor_number, long long second) {
    // splitmix64's finaliser: neighbouring seconds and sensors look unrelated.
    uint64_t mixed =
        (uint64_t{seed} << 32) ^ (uint64_t{sensor_number} << 40) ^ static_cast<uint64_t>(second);
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9ULL;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebULL;
    mixed ^= mixed >> 31;
    return static_cast<int>(mixed % 5) - 2;
}

bool set_sensor_drift(std::optional<uint32_t> seed) {
    return sim::update_state_ini(sensor_readings_file(), [&](pt::ptree& tree) {
        if (seed)
            tree.put(drift_seed_key, *seed);
        else
            tree.erase("Drift");
        return true;
    });
}

bool set_raw_reading(uint8_t sensor_number, uint8_t raw) {
    return sim::update_state_ini(sensor_readings_file(), [&](pt::ptree& tree) {
        tree.put(std::string(section) + '.' + std::to_string(sensor_number),
                 static_cast<unsigned>(raw));
        return true;
    });
}

bool clear_raw_reading(uint8_t sensor_number) {
    return sim::update_state_ini(sensor_readings_file(), [&](pt::ptree& tree) {
        auto entries = tree.get_child_optional(section);
        return entries && entries->erase(std::to_string(sensor_number)) > 0;
    });
}

bool clear_raw_readings() {
    return sim::update_state_ini(sensor_readings_file(), [](pt::ptree& tree) {
        tree.erase(section);
        return true;
    });
}

}  // namespace platform

extern "C" int UtilRearmSensorEvents(uint8_t sensor_number) {
    const St_SensorData* record = SensorFindRecord(sensor_number);
    if (!record || record->reading_type == READING_TYPE_THRESHOLD) return PLT_ERR_NOT_FOUND;
    return platform::clear_raw_reading(sensor_number) ? PLT_OK : PLT_ERR_IO;
}
