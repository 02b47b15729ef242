// Checks of action parameters that several actions share.
#pragma once

#include <string>

#include "frontend/message.h"
#include "frontend/request_context.h"

namespace odata::redfish {

// Throws 400: MalformedJSON, UnrecognizedRequestBody for a body that is not
// an object, ActionParameterUnknown for each member.
// Actions that take no parameters accept no body or an empty object.
void check_no_parameters(const request_context& context, const std::string& action);

// A message about the value of one parameter: arguments (value, parameter,
// action), related property "/<parameter>".
void add_parameter_message(result_record& result, const std::string& message_id,
                           const std::string& value, const std::string& parameter,
                           const std::string& action);

}  // namespace odata::redfish
