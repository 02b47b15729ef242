// The SDR repository as the chassis resources read it: which records they
// expose and how a record's readings become JSON values.
#pragma once

#include <boost/json.hpp>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/libipmi_sensors.h"

namespace odata::redfish {

// The records of the repository: sensor_count of the shared state, bounded
// by the table (a larger count is logged and not followed).
size_t sensor_record_count();

// The full and compact records, in repository order; the Sensors
// collection numbers them from 1.
std::vector<const St_SensorData*> exposed_sensors();

// The exposed record of that number (from 1), or null.
const St_SensorData* exposed_sensor(size_t number);

// The full (threshold) records of one SENSOR_TYPE_*, in repository order.
std::vector<const St_SensorData*> threshold_sensors(uint8_t sensor_type);

// The exposed record whose id string is name, or null.
const St_SensorData* find_sensor_named(std::string_view name);

// The id string, its length taken from the record.
std::string sensor_name(const St_SensorData& record);

// JSON number type the schema property takes (fans count in whole RPM).
enum class number_form { decimal, integer };

// A full record's raw value in its unit, rounded to the record's resolution.
boost::json::value raw_to_json(const St_SensorData& record, uint8_t raw, number_form form);

// The present reading (converted for full records, state bits for compact
// ones); null while the sensor has no reading.
boost::json::value reading_value(const St_SensorData& record, number_form form);

// Upper/LowerThresholdCritical/Fatal of the thresholds the record has.
void add_thresholds(boost::json::object& member, const St_SensorData& record, number_form form);

// "Status" from the sensor's health.
boost::json::object sensor_status(const St_SensorData& record);

}  // namespace odata::redfish
