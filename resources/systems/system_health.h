// Health codes (SENSOR_HEALTH_*) of the computer system and its summaries,
// for the shared Status mapping.
#pragma once

namespace odata::redfish {

// Every sensor; when all are normal, the memory's health and temperature.
int system_health_code();

// The worst of the sensors named like "CPU.*Temp"; a sensor without a
// reading counts as normal, as in the platform's own groups.
int processor_health_code();

}  // namespace odata::redfish
