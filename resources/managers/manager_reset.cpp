#include "resources/managers/manager_reset.h"

#include <algorithm>

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "platform/libbmc.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

constexpr const char* manager_reset_action = "Manager.Reset";
constexpr const char* parameter_name = "ResetType";

// The simulated BMC restarts the same way for both: it has no state to
// save first.
bool is_reset_type(std::string_view name) {
    const auto& names = manager_reset_type_names();
    return std::find(names.begin(), names.end(), name) != names.end();
}

void check_request(const boost::json::object& parameters) {
    result_record result = general_error();
    for (const auto& [name, value] : parameters) {
        if (name != parameter_name) {
            unknown_property::in_post(manager_reset_action).report(result, std::string(name));
            continue;
        }
        const boost::json::string* text = value.if_string();
        if (!text)
            add_message(result, "Base.1.10.ActionParameterValueTypeError",
                        {shown_value(value), parameter_name, manager_reset_action}, {"/ResetType"});
        else if (!is_reset_type(*text))
            add_message(result, "Base.1.10.ActionParameterValueNotInList",
                        {std::string(*text), parameter_name, manager_reset_action}, {"/ResetType"});
    }
    if (!parameters.contains(parameter_name))
        add_message(result, "Base.1.10.ActionParameterMissing",
                    {manager_reset_action, parameter_name});
    if (!result.entries.empty()) throw_http_result(400, result);
}

}  // namespace

const std::vector<std::string_view>& manager_reset_type_names() {
    static const std::vector<std::string_view> names = {"GracefulRestart", "ForceRestart"};
    return names;
}

manager_reset::manager_reset(request_context& context)
    : webservice(context), manager_(std::make_shared<manager>(context)) {}

int manager_reset::post(request_context& context) {
    check_request(request_object(context.body_json()));
    if (PltBMC_Reset() != PLT_OK) {
        console_log("[Manager.Reset] the BMC did not restart cleanly\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    manager_->answer_success();
    return 0;
}

void manager_reset::send_response() { manager_->send_response(); }

}  // namespace odata::redfish
