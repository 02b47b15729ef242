// Times as Redfish shows them.
#pragma once

#include <string>

namespace odata::redfish {

// "2026-11-23T08:41:28+00:00" for seconds since the epoch, in UTC.
std::string redfish_date_time(long seconds);

}  // namespace odata::redfish
