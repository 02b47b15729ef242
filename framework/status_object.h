// The Redfish "Status" of a resource from a platform health code; every
// resource with a Status fills it through this one routine.
#pragma once

#include <boost/json.hpp>

namespace odata::redfish {

// "OK", "Warning" or "Critical"; null for a code without a health (no
// reading).
const char* health_text(int health_code);

// {"State", "Health", "HealthRollup"}: State "Enabled" with the code's
// health, or {"State": "UnavailableOffline"} when the code has none.
boost::json::object status_object(int health_code);

}  // namespace odata::redfish
