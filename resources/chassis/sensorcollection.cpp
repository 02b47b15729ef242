#include "resources/chassis/sensorcollection.h"

#include "resources/chassis/chassis_uris.h"
#include "resources/chassis/sdr_sensors.h"

namespace odata::redfish {

sensorcollection::sensorcollection(request_context& context)
    : redfish(context, "SensorCollection", "", "Sensor Collection", sensors_uri) {}

int sensorcollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members;
    const size_t count = exposed_sensors().size();
    for (size_t index = 1; index <= count; ++index)
        members.push_back(std::string(sensors_uri) + "/" + std::to_string(index));
    set_members(members);
    return 0;
}

}  // namespace odata::redfish
