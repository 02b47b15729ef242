// Readings set on the simulated BMC, with the event-log records of the
// threshold crossings they cause.
#pragma once

#include <cstdint>

namespace platform {

// Stores a raw reading; when a threshold sensor's health changes with it,
// logs the new health (logged_alerts.h). False when it cannot be stored.
bool set_sensor_reading(uint8_t sensor_number, uint8_t raw);

}  // namespace platform
