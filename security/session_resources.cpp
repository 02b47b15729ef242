#include "security/session_resources.h"

#include <iostream>

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/message_table.h"
#include "frontend/response_headers.h"
#include "security/auth.h"
#include "security/session_settings.h"
#include "security/session_store.h"

namespace odata::redfish {
namespace {

constexpr const char* session_service_uri = "/redfish/v1/SessionService";
constexpr const char* session_collection_uri = "/redfish/v1/SessionService/Sessions";

// A change answers with its status line; send-response completes the
// headers, and the web server sends no body with a 204.
void answer_no_content() { write_status_line(204); }

// What a PATCH stores: the settings as they are, changed by the request. They
// stay locked from their read to the store.
struct session_service_changes {
    const platform::record_lock hold = sessionserviceconfig::lock();
    long timeout = sessionserviceconfig::session_timeout();
    bool enabled = sessionserviceconfig::service_enabled();
};

void read_session_timeout(const request_member& member, session_service_changes& changes,
                          result_record& result) {
    std::optional<long> timeout =
        require_integer_up_to(member.value, max_session_timeout, member.path, result);
    if (timeout && *timeout < min_session_timeout)
        add_value_message(result, "Base.1.10.PropertyValueFormatError", shown_value(member.value),
                          member.path);
    else if (timeout)
        changes.timeout = *timeout;
}

void read_service_enabled(const request_member& member, session_service_changes& changes,
                          result_record& result) {
    if (std::optional<bool> enabled = require_boolean(member.value, member.path, result))
        changes.enabled = *enabled;
}

const patch_property<session_service_changes> session_service_properties[] = {
    {"ServiceEnabled", read_service_enabled},
    {"SessionTimeout", read_session_timeout},
};

}  // namespace

sessionservice::sessionservice(request_context& context)
    : redfish(context, "SessionService", std::string(schema_file_of("SessionService").version),
              "Session Service", session_service_uri) {}

int sessionservice::get(request_context&) {
    set_common_properties();
    set("Description", "Session Service");
    set("Status", {{"State", "Enabled"}, {"Health", "OK"}});
    set("ServiceEnabled", sessionserviceconfig::service_enabled());
    set("SessionTimeout", sessionserviceconfig::session_timeout());
    set("Sessions", link(session_collection_uri));
    return 0;
}

int sessionservice::patch(request_context& context) {
    const boost::json::value body = context.body_json();
    session_service_changes changes;
    result_record result = general_error();
    for (const auto& [name, value] : request_object(body))
        read_patch_property(session_service_properties,
                            {std::string(name), value, std::string(name)}, changes, result);
    if (!result.entries.empty()) throw_http_result(400, result);
    if (!sessionserviceconfig::store(changes.timeout, changes.enabled))
        throw_http_error(500, "Base.1.10.InternalError");
    answer_no_content();
    return 0;
}

sessionscollection::sessionscollection(request_context& context)
    : redfish(context, "SessionCollection", "", "Session Collection", session_collection_uri) {}

int sessionscollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members;
    for (int id : session_ids()) members.push_back(session_uri(id));
    set_members(members);
    return 0;
}

// The login: the login authenticator checks the body's credentials (the
// route lets it through unauthenticated). A disabled session service opens no new sessions; those
// open stay.
int sessionscollection::post(request_context& context) {
    if (!sessionserviceconfig::service_enabled())
        throw_http_error(403, "Base.1.10.AccessDenied", {session_collection_uri});
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
    : redfish(context, "Session", std::string(schema_file_of("Session").version), "Session",
              session_uri(id)),
      id_(id) {}

int sessions::get(request_context&) {
    std::optional<St_RedfishSession> record = find_session(id_);
    if (!record) throw_http(404);
    set_common_properties();
    set("Description", "Manager User Session");
    set("UserName", session_user_name(*record));
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
