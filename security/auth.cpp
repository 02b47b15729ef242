#include "security/auth.h"

#include <cstring>
#include <iostream>

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "frontend/request_parameters.h"
#include "frontend/response_headers.h"
#include "platform/libipmi.h"
#include "platform/libweb.h"
#include "security/basic_credentials.h"
#include "security/failure_log.h"
#include "security/session_store.h"

namespace odata::redfish {
namespace {

constexpr int max_authorization_length = 128;
constexpr size_t client_ip_length = 61;
constexpr size_t max_interface_user_name = 256;

std::string client_ip() {
    char address[client_ip_length] = {};
    GetClientIP(address, client_ip_length);
    address[client_ip_length - 1] = '\0';
    return address;
}

// Publishes the caller to the platform's channel record.
void record_caller(const std::string& address, const std::string& user_name) {
    std::strncpy(InterfaceInfo->client_ip, address.c_str(), sizeof InterfaceInfo->client_ip - 1);
    InterfaceInfo->privilege = 0;
    if (user_name.size() < max_interface_user_name)
        std::strncpy(InterfaceInfo->user_name, user_name.c_str(),
                     sizeof InterfaceInfo->user_name - 1);
}

std::string json_text(const boost::json::object& body, const char* name) {
    const boost::json::value* value = body.if_contains(name);
    return value && value->is_string() ? std::string(value->get_string()) : std::string();
}

// A NUL would end the text where the platform reads it: the login would be
// checked for a shorter name or password than the one sent.
void refuse_embedded_nul(const std::string& user_name, const std::string& password) {
    result_record result = general_error();
    if (user_name.find('\0') != std::string::npos)
        add_value_message(result, "Base.1.10.PropertyValueFormatError", user_name, "UserName");
    if (password.find('\0') != std::string::npos)
        add_value_message(result, "Base.1.10.PropertyValueFormatError", hidden_value, "Password");
    if (!result.entries.empty()) throw_http_result(400, result);
}

}  // namespace

int auth::respond_success(request_context&) { return 0; }
void auth::refuse(request_context&) {}
void auth::refuse_locked(request_context&) { throw_http_error(403, "TWR.1.0.AccountLockup"); }
int auth::open_session(request_context&) { return 0; }

basic_auth::basic_auth(request_context&) {
    std::optional<std::string_view> header = request_parameter(cgi_parameter::authorization);
    if (!header || header->size() > max_authorization_length) return;
    if (auto credentials = decode_basic_authorization(std::string(*header))) {
        user_name = credentials->user_name;
        password = credentials->password;
        has_credentials = true;
    }
}

token_auth::token_auth(request_context& context) {
    is_login = true;
    boost::json::value body = context.body_json();
    if (!body.is_object()) return;
    user_name = json_text(body.get_object(), "UserName");
    password = json_text(body.get_object(), "Password");
    refuse_embedded_nul(user_name, password);
}

int token_auth::respond_success(request_context& context) {
    remove_expired_sessions();
    return open_session(context);
}

namespace {

// A local user's session belongs to the slot's account as it is now.
std::optional<session_owner> owner_of(const auth& login) {
    if (login.matched.slot < 0)
        return session_owner{login.matched.name, login.privilege, login.matched.source, -1, 0};
    return local_owner(login.matched.slot, login.matched.source);
}

}  // namespace

int token_auth::open_session(request_context& context) {
    std::optional<session_owner> owner = owner_of(*this);
    session_refusal refusal = session_refusal::table_full;
    std::optional<opened_session> session =
        owner ? odata::redfish::open_session(*owner, &refusal) : std::nullopt;
    if (!session && refusal == session_refusal::share_used)
        throw_http_error(503, "Base.1.10.SessionLimitExceeded");
    if (!session) {
        write_status_line(404);
        throw exception("");
    }
    token = session->token;
    session_uri = session->uri;
    session_id = session->id;
    context.session_id = session_id;
    std::cout << "X-Auth-Token:" << token << "\r\n"
              << "Location:" << session_uri << "\r\n"
              << "Status: 201 Created\r\n";
    return session_id;
}

void token_auth::refuse(request_context&) {
    write_status_line(401);
    throw exception("");
}

std::shared_ptr<auth> make_authenticator(request_context& context, int mode) {
    if (!request_parameter(cgi_parameter::request_method)) {
        std::cout << "no method";
        return nullptr;
    }
    if (mode == basic_mode) return std::make_shared<basic_auth>(context);
    if (mode != login_mode) return nullptr;
    context.session_limit = max_sessions;
    return std::make_shared<token_auth>(context);
}

bool authenticate(request_context& context, auth& authenticator) {
    const std::string address = client_ip();
    record_caller(address, authenticator.user_name);
    if (authenticator.user_name.size() < max_interface_user_name &&
        !authenticator.password.empty()) {
        authenticator.matched =
            check_credentials(authenticator.user_name, authenticator.password, address);
        if (authenticator.matched.result == credential_check::locked) {
            authenticator.matched = {};
            authenticator.refuse_locked(context);
        }
        if (authenticator.matched.result == credential_check::accepted) {
            authenticator.privilege = authenticator.matched.privilege;
            // From here on the caller is the account as stored, not the
            // alias that was typed.
            context.user_name = authenticator.matched.name;
            record_caller(address, context.user_name);
            context.privilege = authenticator.privilege;
            context.account_slot = authenticator.matched.slot;
            InterfaceInfo->privilege = static_cast<uint8_t>(authenticator.privilege);
            authenticator.success_result = authenticator.respond_success(context);
            return true;
        }
    }
    if (authenticator.is_login && authenticator.matched.log_failure)
        log_failed_authentication("/redfish/v1/SessionService/Sessions/");
    authenticator.refuse(context);
    return false;
}

}  // namespace odata::redfish
