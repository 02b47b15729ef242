#include "base/utc_time.h"

#include <ctime>

namespace platform {

std::string utc_timestamp(long long seconds) {
    char text[32];
    const std::time_t time = static_cast<std::time_t>(seconds);
    std::tm utc{};
    gmtime_r(&time, &utc);
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S+00:00", &utc);
    return text;
}

}  // namespace platform
