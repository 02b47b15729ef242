#include "framework/status_object.h"

#include <algorithm>
#include <iterator>

#include "frontend/answer_storage.h"
#include "platform/libipmi_sensors.h"

namespace odata::redfish {
namespace {

struct health_entry {
    int code;
    const char* health;
};

constexpr health_entry health_table[] = {
    {SENSOR_HEALTH_OK, "OK"},
    {SENSOR_HEALTH_WARNING, "Warning"},
    {SENSOR_HEALTH_CRITICAL, "Critical"},
};

}  // namespace

const char* health_text(int health_code) {
    auto found = std::find_if(
        std::begin(health_table), std::end(health_table),
        [health_code](const health_entry& entry) { return entry.code == health_code; });
    return found == std::end(health_table) ? nullptr : found->health;
}

boost::json::object status_object(int health_code) {
    const char* health = health_text(health_code);
    if (!health) return boost::json::object({{"State", "UnavailableOffline"}}, answer_storage());
    return boost::json::object({{"State", "Enabled"}, {"Health", health}, {"HealthRollup", health}},
                               answer_storage());
}

}  // namespace odata::redfish
