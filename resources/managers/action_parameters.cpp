#include "resources/managers/action_parameters.h"

#include "framework/property_checks.h"
#include "frontend/exception_http.h"

namespace odata::redfish {

void read_optional_parameters(const request_context& context, const std::string& action,
                              const parameter_reader& read,
                              const std::function<void(result_record&)>& check_together) {
    const std::optional<std::string_view> body = context.body();
    result_record result = general_error();
    if (body && !body->empty()) {
        const boost::json::value parameters = context.body_json();
        const boost::json::object* object = parameters.if_object();
        if (!object) throw_http_error(400, "Base.1.10.UnrecognizedRequestBody");
        for (const auto& [name, value] : *object)
            if (!read(std::string(name), value, result))
                unknown_property::in_post(action).report(result, std::string(name));
    }
    if (check_together) check_together(result);
    if (!result.entries.empty()) throw_http_result(400, result);
}

void check_no_parameters(const request_context& context, const std::string& action) {
    read_optional_parameters(
        context, action,
        [](const std::string&, const boost::json::value&, result_record&) { return false; });
}

void add_parameter_message(result_record& result, const std::string& message_id,
                           const std::string& value, const std::string& parameter,
                           const std::string& action) {
    add_message(result, message_id, {value, parameter, action}, {"/" + parameter});
}

}  // namespace odata::redfish
