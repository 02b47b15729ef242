#include "resources/managers/redfish_date_time.h"

#include <ctime>

namespace odata::redfish {

std::string redfish_date_time(long long seconds_since_epoch) {
    const std::time_t time = static_cast<std::time_t>(seconds_since_epoch);
    std::tm parts{};
    char text[64];
    if (!gmtime_r(&time, &parts) ||
        std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S+00:00", &parts) == 0)
        return "1970-01-01T00:00:00+00:00";
    return text;
}

}  // namespace odata::redfish
