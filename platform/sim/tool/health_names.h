// How bmcsim prints the SENSOR_HEALTH_* codes.
#pragma once

#include "platform/libipmi_sensors.h"

namespace bmcsim {

inline const char* health_name(int health) {
    static constexpr const char* names[] = {"unavailable", "ok", "warning", "critical"};
    return health >= SENSOR_HEALTH_UNAVAILABLE && health <= SENSOR_HEALTH_CRITICAL ? names[health]
                                                                                   : "error";
}

}  // namespace bmcsim
