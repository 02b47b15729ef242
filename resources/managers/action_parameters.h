// Checks of action parameters that several actions share.
#pragma once

#include <boost/json.hpp>
#include <functional>
#include <string>

#include "frontend/message.h"
#include "frontend/request_context.h"

namespace odata::redfish {

// Throws 400: MalformedJSON, UnrecognizedRequestBody for a body that is not
// an object, ActionParameterUnknown for each member.
// Actions that take no parameters accept no body or an empty object.
void check_no_parameters(const request_context& context, const std::string& action);

// Reads one parameter into the caller's record, adding messages about its
// value to result; false for a parameter the action does not take.
using parameter_reader = std::function<bool(
    const std::string& name, const boost::json::value& value, result_record& result)>;
// As check_no_parameters, but each member goes to read first; then
// check_together may add messages about the parameters as a whole.
void read_optional_parameters(const request_context& context, const std::string& action,
                              const parameter_reader& read,
                              const std::function<void(result_record&)>& check_together = {});

// A message about the value of one parameter: arguments (value, parameter,
// action), related property "/<parameter>".
void add_parameter_message(result_record& result, const std::string& message_id,
                           const std::string& value, const std::string& parameter,
                           const std::string& action);

}  // namespace odata::redfish
