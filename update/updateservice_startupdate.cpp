#include "update/updateservice_startupdate.h"

#include "frontend/exception_http.h"
#include "tasks/accepted_response.h"
#include "update/firmware_update_checks.h"
#include "update/push_parameters.h"
#include "update/pushed_update_start.h"
#include "update/staged_update_request.h"
#include "update/update_uris.h"

namespace odata::redfish {
namespace {

// The action has no required parameter: an empty body asks for the pushed
// image as it waits.
boost::json::object start_update_body(const request_context& context) {
    const std::optional<std::string_view> body = context.body();
    if (!body || body->empty()) return {};
    const boost::json::value parsed = context.body_json();
    if (!parsed.is_object()) throw_http_error(400, "Base.1.10.UnrecognizedRequestBody");
    return parsed.as_object();
}

}  // namespace

int updateservice_startupdate::post(request_context& context) {
    check_no_evidence_dump();
    const boost::json::object body = start_update_body(context);
    staged_update_request request;
    result_record result = push_errors();
    read_start_update(body, request, result);
    if (!result.entries.empty()) throw_http_result(400, result);
    answer_accepted(start_pushed_update(request.device, start_update_uri, push_errors()));
    return 0;
}

}  // namespace odata::redfish
