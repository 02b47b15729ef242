// The registry Event.v1_0_0 of the messages that the BMC's own events
// carry, as a Redfish MessageRegistry document.
#pragma once

#include <boost/json.hpp>

namespace odata::redfish {

boost::json::object event_message_registry();

}  // namespace odata::redfish
