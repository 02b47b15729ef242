// Raw readings that differ from the SDR's nominal reading, kept in
// <root>/var/bmc/sensors.ini:
//
//   [Readings] <sensor number, decimal>=<raw value 0..255>
//
// A sensor without an entry reads its nominal value.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "platform/libipmi_sensors.h"

namespace platform {

std::string sensor_readings_file();

using raw_readings = std::map<uint8_t, uint8_t>;

// Every stored raw reading, by sensor number, parsed once per version of
// the file.
std::shared_ptr<const raw_readings> stored_sensor_readings();

// The raw reading of the record given the stored readings.
uint8_t raw_reading(const St_SensorData& record, const std::map<uint8_t, uint8_t>& stored);

// Stores a raw reading; false when the file cannot be written.
bool set_raw_reading(uint8_t sensor_number, uint8_t raw);

// One sensor back to its nominal reading.
bool clear_raw_reading(uint8_t sensor_number);

// Back to the nominal readings.
bool clear_raw_readings();

}  // namespace platform
