// The changes a PATCH of the chassis asks for: read and checked in one pass
// that collects every message, then applied.
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>

#include "frontend/message.h"

namespace odata::redfish {

struct chassis_changes {
    std::optional<std::string> asset_tag;
    std::optional<std::string> indicator_led;
    bool rearm_intrusion = false;
};

// Adds a message to result for each property that cannot be taken; under
// system lockdown only the identify light may change.
chassis_changes read_chassis_changes(const boost::json::object& body, bool lockdown,
                                     result_record& result);

// Applies the changes in order and records each in the event log; stops at
// the first the platform refuses and returns its property path (empty when
// all were applied).
std::string apply_chassis_changes(const chassis_changes& changes);

}  // namespace odata::redfish
