// The chassis's PhysicalSecurity: the intrusion sensor, its state and its
// re-arm policy.
#pragma once

#include <boost/json.hpp>
#include <string>
#include <vector>

namespace odata::redfish {

// {IntrusionSensorNumber, IntrusionSensor, IntrusionSensorReArm}; null when
// the board has no intrusion sensor.
boost::json::value physical_security();

// The values a client may set: IntrusionSensor only back to "Normal" (a
// re-arm), IntrusionSensorReArm only the sensor's own "Manual".
const std::vector<std::string>& settable_intrusion_states();
const std::vector<std::string>& settable_rearm_policies();

// Clears a latched intrusion; false (and logged) when the platform refuses.
bool rearm_intrusion_sensor();

}  // namespace odata::redfish
