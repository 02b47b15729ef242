#include "resources/chassis/thermal.h"

#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "resources/chassis/array_member.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/chassis/physical_context.h"
#include "resources/chassis/power_state.h"
#include "resources/chassis/related_item.h"
#include "resources/chassis/sdr_sensors.h"

namespace odata::redfish {
namespace {

// System fans sit in the chassis and cool the whole system.
constexpr const char* fan_physical_context = "Chassis";

boost::json::object temperature_member(const St_SensorData& record, size_t index) {
    const std::string name = sensor_name(record);
    boost::json::object member =
        array_member(thermal_uri, "Temperatures", index, "Thermal", "Temperature");
    member["Name"] = name;
    member["SensorNumber"] = record.sensor_number;
    member["Status"] = sensor_status(record);
    member["ReadingCelsius"] = reading_value(record, number_form::decimal);
    add_thresholds(member, record, number_form::decimal);
    member["MinReadingRangeTemp"] = raw_to_json(record, record.min_reading, number_form::decimal);
    member["MaxReadingRangeTemp"] = raw_to_json(record, record.max_reading, number_form::decimal);
    member["PhysicalContext"] = temperature_physical_context(name);
    member["RelatedItem"] = link_array(temperature_related_item(record));
    return member;
}

// Fans powered by the host stand still while it is off: they have no
// reading then, whatever the sensor last held.
boost::json::object fan_member(const St_SensorData& record, size_t index, bool host_on) {
    const bool spinning = host_on || !(record.flags & SDR_FLAG_HOST_POWERED);
    boost::json::object member = array_member(thermal_uri, "Fans", index, "Thermal", "Fan");
    member["Name"] = sensor_name(record);
    member["SensorNumber"] = record.sensor_number;
    member["PhysicalContext"] = fan_physical_context;
    member["Status"] = spinning ? sensor_status(record) : status_object(SENSOR_HEALTH_UNAVAILABLE);
    member["ReadingUnits"] = "RPM";
    member["Reading"] = spinning ? reading_value(record, number_form::integer) : nullptr;
    add_thresholds(member, record, number_form::integer);
    member["MinReadingRange"] = raw_to_json(record, record.min_reading, number_form::integer);
    member["MaxReadingRange"] = raw_to_json(record, record.max_reading, number_form::integer);
    member["RelatedItem"] =
        boost::json::array({link(host_system_uri), link(chassis_uri)}, answer_storage());
    return member;
}

boost::json::array temperature_members() {
    boost::json::array members(answer_storage());
    for (const St_SensorData* record : threshold_sensors(SENSOR_TYPE_TEMPERATURE))
        members.push_back(temperature_member(*record, members.size()));
    return members;
}

boost::json::array fan_members() {
    const bool host_on = host_power_on();
    boost::json::array members(answer_storage());
    for (const St_SensorData* record : threshold_sensors(SENSOR_TYPE_FAN))
        members.push_back(fan_member(*record, members.size(), host_on));
    return members;
}

}  // namespace

thermal::thermal(request_context& context)
    : redfish(context, "Thermal", std::string(schema_file_of("Thermal").version), "Thermal",
              thermal_uri) {}

int thermal::get(request_context&) {
    set_common_properties();
    set("Temperatures", temperature_members());
    set("Fans", fan_members());
    return 0;
}

}  // namespace odata::redfish
