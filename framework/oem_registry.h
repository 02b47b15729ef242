// The service's own message registry, TWR.v1_0_0, as a Redfish
// MessageRegistry document built from the TWR rows of the message table.
#pragma once

#include <boost/json.hpp>
#include <string_view>
#include <vector>

#include "frontend/message_table.h"

namespace odata::redfish {

boost::json::object oem_message_registry();

// A MessageRegistry document for the registry file Id registry_id
// ("TWR.v1_0_0"); each message's id is its name within the registry.
boost::json::object message_registry_document(std::string_view registry_id,
                                              std::string_view description,
                                              const std::vector<message_text>& messages);

// The arguments a message text takes: its highest "%n" placeholder, so a
// text that names "%1" twice takes one.
unsigned number_of_args(std::string_view message);

}  // namespace odata::redfish
