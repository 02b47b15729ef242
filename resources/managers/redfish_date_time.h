// Times as Redfish writes them.
#pragma once

#include <string>

namespace odata::redfish {

// "2026-11-23T08:42:41+00:00": the BMC keeps UTC.
std::string redfish_date_time(long long seconds_since_epoch);

}  // namespace odata::redfish
