#include "security/caller_authentication.h"

#include <cstring>
#include <string_view>

#include "framework/ini_settings.h"
#include "frontend/exception_http.h"
#include "frontend/request_parameters.h"
#include "platform/libweb.h"
#include "security/auth.h"
#include "security/failure_log.h"
#include "security/session_store.h"

namespace odata::redfish {
namespace {

bool accept_token(request_context& context) {
    std::optional<std::string_view> token = request_parameter(cgi_parameter::auth_token);
    if (!token || token->size() != SESSION_TOKEN_LEN) return false;
    std::optional<St_RedfishSession> session = validate_token(*token);
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

bool open_reads_allowed() {
    static const ini_settings service_settings("/nv/redfish/redfish.ini");
    static const kept_setting<int> open_root(service_settings, "Service.UnauthenticatedServiceRoot",
                                             0);
    return open_root.get() == 1;
}

}  // namespace odata::redfish
