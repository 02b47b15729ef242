#include "tasks/eventservice_submittestevent.h"

#include "frontend/exception_http.h"
#include "tasks/event_alerts.h"
#include "tasks/submittestevent_parameters.h"

namespace odata::redfish {
namespace {

// Delivery runs detached; the request does not wait on any receiver.
void send_to_subscriptions(const test_event& event) {
    std::vector<const char*> args;
    for (const std::string& arg : event.message_args) args.push_back(arg.c_str());
    const St_AlertEvent alert{event.event_type.c_str(),
                              event.event_id.c_str(),
                              event.severity.c_str(),
                              event.event_timestamp.c_str(),
                              event.message.c_str(),
                              event.message_id.c_str(),
                              args.data(),
                              static_cast<int>(args.size()),
                              event.origin_of_condition.c_str(),
                              "",
                              "",
                              "",
                              nullptr};
    send_alert_event(alert, [](const St_AlertDest& entry) { return entry.enabled != 0; });
}

}  // namespace

eventservice_submittestevent::eventservice_submittestevent(request_context& context)
    : webservice(context), service_(std::make_shared<eventservice>(context)) {}

int eventservice_submittestevent::post(request_context& context) {
    const boost::json::value body = context.body_json();
    const boost::json::object* parameters = body.if_object();
    if (!parameters) throw_http_error(400, "Base.1.10.UnrecognizedRequestBody");
    result_record result = general_error();
    const test_event event = read_test_event(*parameters, result);
    if (!result.entries.empty()) throw_http_result(400, result);
    send_to_subscriptions(event);
    service_->answer_success();
    return 0;
}

void eventservice_submittestevent::send_response() { service_->send_response(); }

}  // namespace odata::redfish
