#include "resources/systems/raid_action.h"

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "platform/plt_result.h"
#include "resources/systems/raid_paths.h"
#include "resources/systems/volume.h"

namespace odata::redfish {
namespace {

// The body as JSON; null when there is none, as actions without required
// parameters take.
boost::json::value body_of(const request_context& context) {
    const auto body = context.body();
    return body && !body->empty() ? context.body_json() : boost::json::value();
}

// The body's parameters; none for an empty body.
const boost::json::object* parameters_of(const boost::json::value& body) {
    if (body.is_null()) return nullptr;
    const boost::json::object* parameters = body.if_object();
    if (!parameters) throw_http_error(400, "Base.1.10.UnrecognizedRequestBody");
    return parameters;
}

}  // namespace

raid_action::raid_action(request_context& context, std::string action)
    : webservice(context), action_(std::move(action)) {}

void raid_action::send_response() {
    if (answer_) answer_->send_response();
}

void raid_action::answer_success() {
    answer_ = std::make_shared<storage>(context_);
    answer_->answer_success();
}

void raid_action::refuse_parameters(const request_context& context) const {
    const boost::json::value body = body_of(context);
    const boost::json::object* parameters = parameters_of(body);
    if (!parameters || parameters->empty()) return;
    result_record result = general_error();
    for (const auto& member : *parameters)
        unknown_property::in_post(action_).report(result, std::string(member.key()));
    throw_http_result(400, result);
}

int raid_action::controller_parameter(const request_context& context,
                                      const raid_family& family) const {
    const boost::json::value body = body_of(context);
    const boost::json::object* parameters = parameters_of(body);
    result_record result = general_error();
    int controller = 0;
    for (const auto& [name, value] : parameters ? *parameters : boost::json::object{}) {
        if (name != "Controller") {
            unknown_property::in_post(action_).report(result, std::string(name));
            continue;
        }
        const std::optional<long> number = require_integer_in_range(
            value, 0, raid_controller_count(family) - 1, "Controller", result);
        controller = static_cast<int>(number.value_or(0));
    }
    refuse_if_reported(result);
    return controller;
}

bool raid_action::indicator_parameter(const request_context& context) const {
    const boost::json::value body = body_of(context);
    const boost::json::object* parameters = parameters_of(body);
    constexpr const char* name = "LocationIndicatorActive";
    result_record result = general_error();
    std::optional<bool> active;
    for (const auto& [key, value] : parameters ? *parameters : boost::json::object{}) {
        if (key == name)
            active = require_boolean(value, name, result);
        else
            unknown_property::in_post(action_).report(result, std::string(key));
    }
    if (!parameters || !parameters->contains(name))
        add_message(result, "Base.1.10.ActionParameterMissing", {action_, name});
    refuse_if_reported(result);
    return active.value_or(false);
}

void raid_action::check(int result, const std::string& message_id, const message_args& args) const {
    if (result == PLT_OK) return;
    if (result == PLT_ERR_NOT_FOUND)
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"Resource", context_.uri});
    throw_http_error(400, message_id, args);
}

void raid_action::apply_to_volume(const request_context& context,
                                  int (*step)(int family, int controller, int volume)) {
    const raid_volume_ref ref = volume_of_request(context).ref;
    refuse_parameters(context);
    check(step(ref.family->family, ref.controller, ref.volume), "Base.1.10.ActionNotSupported",
          {action_});
    answer_success();
}

}  // namespace odata::redfish
