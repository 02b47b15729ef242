// RelatedItem of temperature and voltage sensors: what the sensor measures.
#pragma once

#include <string>
#include <string_view>

#include "platform/libipmi_sensors.h"

namespace odata::redfish {

// The network adapter, GPU or processor that the name points at; for any
// other sensor the system when it reads only with host power, else the
// chassis.
std::string temperature_related_item(const St_SensorData& record);

// The system for processor and DIMM rails, the chassis for board rails.
std::string voltage_related_item(std::string_view sensor_name);

}  // namespace odata::redfish
