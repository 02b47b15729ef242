#include "security/caller_authentication.h"

#include <cstring>
#include <string_view>

#include "framework/ini_settings.h"
#include "frontend/exception_http.h"
#include "platform/libipmi.h"
#include "platform/libweb.h"
#include "security/auth.h"
#include "security/failure_log.h"
#include "security/session_store.h"

namespace odata::redfish {
namespace {

constexpr std::string_view open_documents[] = {"/redfish", "/redfish/v1", "/redfish/v1/odata",
                                               "/redfish/v1/$metadata"};

std::string_view without_trailing_slash(std::string_view path) {
    while (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
    return path;
}

bool accept_token(request_context& context) {
    char token[SESSION_TOKEN_LEN + 2] = {};
    if (get_cgi_env("HTTP_X_AUTH_TOKEN", token, SESSION_TOKEN_LEN + 1) != SESSION_TOKEN_LEN)
        return false;
    std::optional<St_RedfishSession> session = validate_token(token);
    if (!session) return false;
    context.user_name = session_user_name(*session);
    context.privilege = session->privilege;
    context.session_id = session->session_id;
    context.account_slot = session->account_slot;
    std::strncpy(InterfaceInfo->user_name, context.user_name.c_str(),
                 sizeof InterfaceInfo->user_name - 1);
    InterfaceInfo->privilege = static_cast<uint8_t>(session->privilege);
    return true;
}

[[noreturn]] void refuse(const request_context& context) {
    char address[61] = {};
    GetClientIP(address, sizeof address);
    std::strcpy(InterfaceInfo->user_name, "NoAuth");
    const auth* tried = context.authenticator.get();
    if (!tried || tried->matched.log_failure) log_failed_authentication(context.uri);
    result_record result = general_error();
    add_message(result, "Base.1.10.ResourceAtUriUnauthorized", {context.uri, "unauthorized"});
    exception_http error = http_error(401, result);
    error.add_header("WWW-Authenticate: Basic realm=\"redfish\"");
    throw error;
}

}  // namespace

void authenticate_caller(request_context& context) {
    std::shared_ptr<auth> basic = make_authenticator(context, basic_mode);
    context.authenticator = basic;
    if (basic && authenticate(context, *basic)) return;
    if (accept_token(context)) return;
    refuse(context);
}

bool reads_without_credentials(const request_context& context) {
    static const ini_settings service_settings("/nv/redfish/redfish.ini");
    if (context.method != GET) return false;
    std::string_view path = without_trailing_slash(context.uri);
    for (std::string_view document : open_documents) {
        if (path == document)
            return service_settings.get<int>("Service.UnauthenticatedServiceRoot", 0) == 1;
    }
    return false;
}

}  // namespace odata::redfish
