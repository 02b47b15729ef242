#include "tasks/redfish_time.h"

#include <ctime>

namespace odata::redfish {

std::string redfish_date_time(long seconds) {
    const std::time_t time = seconds;
    std::tm parts{};
    char text[32] = {};
    if (!gmtime_r(&time, &parts) ||
        std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S+00:00", &parts) == 0)
        return "1970-01-01T00:00:00+00:00";
    return text;
}

}  // namespace odata::redfish
