#include "security/session_resources.h"

#include <iostream>

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "frontend/message_table.h"
#include "security/auth.h"
#include "security/session_settings.h"
#include "security/session_store.h"

namespace odata::redfish {
namespace {

constexpr const char* service_uri = "/redfish/v1/SessionService";
constexpr const char* collection_uri = "/redfish/v1/SessionService/Sessions";

// A change answers with its status line; send-response completes the
// headers, and the web server sends no body with a 204.
void answer_no_content() { std::cout << "Status: 204 No Content\r\n"; }

// Collects the messages of one SessionService property; the settings stay
// locked from their read to the store.
struct session_service_patch {
    const platform::record_lock hold = sessionserviceconfig::lock();
    long timeout = sessionserviceconfig::session_timeout();
    bool enabled = sessionserviceconfig::service_enabled();
    result_record result = general_error();

    void apply(const std::string& name, const boost::json::value& value) {
        const std::string text = boost::json::serialize(value);
        if (name == "SessionTimeout") {
            std::optional<long> accepted = require_integer_in_range(
                value, min_session_timeout, max_session_timeout, name, result);
            if (accepted) timeout = *accepted;
        } else if (name == "ServiceEnabled") {
            if (!value.is_bool())
                add_message(result, "Base.1.10.PropertyValueTypeError", {text, name}, {"/" + name});
            else
                enabled = value.get_bool();
        } else {
            add_message(result, "Base.1.10.PropertyUnknown", {name}, {"/" + name});
        }
    }
};

}  // namespace

sessionservice::sessionservice(request_context& context)
    : redfish(context, "SessionService", "v1_1_8", "Session Service", service_uri) {}

int sessionservice::get(request_context&) {
    set_common_properties();
    set("Description", "Session Service");
    set("Status", {{"State", "Enabled"}, {"Health", "OK"}});
    set("ServiceEnabled", sessionserviceconfig::service_enabled());
    set("SessionTimeout", sessionserviceconfig::session_timeout());
    set("Sessions", link(collection_uri));
    return 0;
}

int sessionservice::patch(request_context& context) {
    boost::json::value body = context.body_json();
    if (!body.is_object() || body.get_object().empty())
        throw_http_error(400, "Base.1.10.EmptyJSON");
    session_service_patch patch;
    for (const auto& [name, value] : body.get_object()) patch.apply(name, value);
    if (!patch.result.entries.empty()) throw_http_result(400, patch.result);
    if (!sessionserviceconfig::store(patch.timeout, patch.enabled))
        throw_http_error(500, "Base.1.10.InternalError");
    answer_no_content();
    return 0;
}

sessionscollection::sessionscollection(request_context& context)
    : redfish(context, "SessionCollection", "", "Session Collection", collection_uri) {}

int sessionscollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members;
    for (int id : session_ids()) members.push_back(session_uri(id));
    set_members(members);
    return 0;
}

// The login: the login authenticator checks the body's credentials.
bool sessionscollection::authenticates_itself(int method) const { return method == POST; }

int sessionscollection::post(request_context& context) {
    std::shared_ptr<auth> login = make_authenticator(context, login_mode);
    context.authenticator = login;
    authenticate(context, *login);
    sessions created(context, context.session_id);
    created.get(context);
    created.send_response();
    return 0;
}

sessions::sessions(request_context& context) : sessions(context, context.capture_number(0)) {}

sessions::sessions(request_context& context, int id)
    : redfish(context, "Session", "v1_3_0", "Session", session_uri(id)), id_(id) {}

int sessions::get(request_context&) {
    std::optional<St_RedfishSession> record = find_session(id_);
    if (!record) throw_http(404);
    set_common_properties();
    set("Description", "Manager User Session");
    set("UserName", record->user_name);
    set("ClientOriginIPAddress", record->client_ip);
    set("Oem", boost::json::object());
    return 0;
}

int sessions::del(request_context&) {
    if (!remove_session(id_)) throw_http(404);
    answer_no_content();
    return 0;
}

}  // namespace odata::redfish
