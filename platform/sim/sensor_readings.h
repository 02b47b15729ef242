// Raw readings that differ from the SDR's nominal reading, and whether the
// others drift, kept in <root>/var/bmc/sensors.ini:
//
//   [Readings] <sensor number, decimal>=<raw value 0..255>
//   [Drift]    Seed=<0..4294967295>
//
// A sensor without an entry reads its nominal value; while [Drift] is set
// and the host is on, a threshold sensor's reading moves around it each
// second as real readings do, the same way for the same seed.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/libipmi_sensors.h"

namespace platform {

const std::string& sensor_readings_file();

struct raw_readings {
    std::map<uint8_t, uint8_t> stored;  // by sensor number
    std::optional<uint32_t> drift_seed;
};

// The stored readings and the drift, parsed once per version of the file.
std::shared_ptr<const raw_readings> stored_sensor_readings();

// The offset in raw counts, -2..2, of a drifting reading in that second.
int drift_step(uint32_t seed, uint8_t sensor_number, long long second);

// Starts the drift with seed, or with none freezes the readings that are
// not stored at their nominal values; false when the file cannot be written.
bool set_sensor_drift(std::optional<uint32_t> seed);

// Stores a raw reading; false when the file cannot be written.
bool set_raw_reading(uint8_t sensor_number, uint8_t raw);

// One sensor back to its nominal reading.
bool clear_raw_reading(uint8_t sensor_number);

// Back to the nominal readings.
bool clear_raw_readings();

}  // namespace platform
