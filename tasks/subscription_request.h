// Reading a subscription from the body of a POST to the collection or a
// PATCH of a subscription, onto an alert-destination entry.
#pragma once

#include <boost/json.hpp>

#include "frontend/message.h"
#include "platform/libalert.h"

namespace odata::redfish {

// Reads body onto entry (the stored entry for a PATCH, an empty one for a
// POST) in one pass, then checks the entry as a whole; every problem adds
// a message to result.
void read_subscription_request(const boost::json::object& body, bool creating, St_AlertDest& entry,
                               result_record& result);

}  // namespace odata::redfish
