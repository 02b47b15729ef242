#include "resources/chassis/sensor.h"

#include "base/joined_text.h"
#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/chassis/sdr_sensors.h"

namespace odata::redfish {
namespace {

std::string captured_index(const request_context& context) {
    return context.captures.empty() ? std::string() : context.captures[0];
}

// "/Sensors/007" is sensor 7: the URI names it as the collection does.
std::string sensor_uri(const request_context& context) {
    const int index = context.capture_number(0);
    return platform::joined(
        {sensors_uri, "/", index < 0 ? captured_index(context) : std::to_string(index)});
}

}  // namespace

sensor::sensor(request_context& context)
    : redfish(context, "Sensor", std::string(schema_file_of("Sensor").version), "Sensor",
              sensor_uri(context)) {}

int sensor::get(request_context& context) {
    const int index = context.capture_number(0);
    const St_SensorData* found = index < 1 ? nullptr : exposed_sensor(index);
    if (!found) throw_http_error(404, "Base.1.10.InvalidIndex", {captured_index(context)});
    const St_SensorData& record = *found;
    set_common_properties();
    set("Name", sensor_name(record));
    set("Status", sensor_status(record));
    boost::json::object extension({{"@odata.type", "#TwrSensorExtensions.v1_0_0.Sensor"},
                                   {"SensorNumber", record.sensor_number},
                                   {"SensorValue", reading_value(record, number_form::decimal)}},
                                  answer_storage());
    boost::json::object oem(answer_storage());
    oem.emplace("Tarnwright", std::move(extension));
    set("Oem", std::move(oem));
    return 0;
}

}  // namespace odata::redfish
