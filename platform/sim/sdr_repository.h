// The simulated BMC's SDR repository (at_St_SensorData): a two-socket
// server's temperatures, fans and voltages as full records, its power
// supply, intrusion and memory state sensors as compact records.
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/libipmi_sensors.h"

namespace platform {

// Rows of at_St_SensorData, the value of at_p_St_GlobalVar->sensor_count.
std::size_t sdr_record_count();

// The record whose id string is name, null when there is none.
const St_SensorData* find_sensor_by_name(std::string_view name);

}  // namespace platform
