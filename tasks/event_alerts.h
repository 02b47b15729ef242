// Events that the service hands to the BMC's alert destinations: each
// entry's Redfish event document carries that entry's context.
#pragma once

#include <functional>
#include <string>

#include "platform/libalert.h"

namespace odata::redfish {

// The Redfish event document: one event, with the subscription's context.
std::string redfish_event_document(const St_AlertEvent& event, const std::string& context);

// Starts the delivery of event to every entry that receives it; the
// deliveries run detached.
void send_alert_event(const St_AlertEvent& event,
                      const std::function<bool(const St_AlertDest&)>& receives);

}  // namespace odata::redfish
