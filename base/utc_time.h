// Time stamps of events, in UTC.
#pragma once

#include <string>

namespace platform {

// "2026-01-01T00:00:00+00:00" for seconds since the epoch.
std::string utc_timestamp(long long seconds);

}  // namespace platform
