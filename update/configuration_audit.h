// Event-log records of configuration taken from or given to the BMC (the
// HTTPS certificate, the IPMI configuration): who, and the message text.
#pragma once

#include <string>

#include "frontend/message.h"

namespace odata::redfish {

void audit_configuration(const std::string& user_name, const std::string& message_id,
                         const message_args& args = {});

}  // namespace odata::redfish
