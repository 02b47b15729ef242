// The service's own message registry, TWR.v1_0_0, as a Redfish
// MessageRegistry document built from the TWR rows of the message table.
#pragma once

#include <boost/json.hpp>
#include <string_view>

namespace odata::redfish {

boost::json::object oem_message_registry();

// The arguments a message text takes: its highest "%n" placeholder, so a
// text that names "%1" twice takes one.
unsigned number_of_args(std::string_view message);

}  // namespace odata::redfish
