#include "base/utc_time.h"

#include <ctime>

namespace platform {

std::string utc_timestamp(long long seconds) {
    const std::time_t time = static_cast<std::time_t>(seconds);
    std::tm utc{};
    char text[32] = {};
    if (!gmtime_r(&time, &utc) ||
        std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S+00:00", &utc) == 0)
        return "1970-01-01T00:00:00+00:00";
    return text;
}

}  // namespace platform
