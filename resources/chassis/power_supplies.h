// The PowerSupplies and Redundancy members of Power: one per bay, and the
// supplies' failover group.
#pragma once

#include <boost/json.hpp>

namespace odata::redfish {

boost::json::array power_supply_members();
boost::json::array power_redundancy_members();

}  // namespace odata::redfish
