#include "security/privileges.h"

#include <string_view>

#include "security/account_slots.h"
#include "security/roles.h"
#include "security/session_store.h"

namespace odata::redfish {
namespace {

struct privilege_rule {
    std::string_view prefix;
    unsigned privileges;
    own_target own;
};

// Changes to a path under a prefix need the rule's privileges; the first
// rule whose prefix holds the path applies, and any other change needs
// ConfigureManager. Reading needs Login everywhere.
constexpr privilege_rule change_rules[] = {
    {"/redfish/v1/SessionService/Sessions", privilege_configure_manager, own_target::session},
    {"/redfish/v1/SessionService", privilege_configure_manager, own_target::none},
    {"/redfish/v1/AccountService/Accounts", privilege_configure_users, own_target::account},
    {"/redfish/v1/AccountService", privilege_configure_users, own_target::none},
    {"/redfish/v1/Systems", privilege_configure_components, own_target::none},
    {"/redfish/v1/Chassis", privilege_configure_components, own_target::none},
    {"/redfish/v1/Managers", privilege_configure_manager, own_target::none},
    {"/redfish/v1/UpdateService", privilege_configure_manager, own_target::none},
    {"/redfish/v1/EventService", privilege_configure_manager, own_target::none},
    {"/redfish/v1/TaskService", privilege_configure_manager, own_target::none},
};

bool under(std::string_view path, std::string_view prefix) {
    return path.substr(0, prefix.size()) == prefix &&
           (path.size() == prefix.size() || path[prefix.size()] == '/');
}

// The last segment of a member path, as a number; 0 for none.
int member_id(std::string_view path) {
    while (!path.empty() && path.back() == '/') path.remove_suffix(1);
    std::string_view last = path.substr(path.find_last_of('/') + 1);
    if (last.empty() || last.size() > 4 || last.find_first_not_of("0123456789") != last.npos)
        return 0;
    return std::stoi(std::string(last));
}

// Ownership goes by the caller's slot: a name may have been given to
// another user since.
bool is_own(const request_context& context, own_target own) {
    int id = member_id(context.uri);
    if (id == 0) return false;
    if (own == own_target::session) {
        if (id == context.session_id) return true;
        std::optional<St_RedfishSession> session = find_session(id);
        return session && context.account_slot >= 0 &&
               session->account_slot == context.account_slot;
    }
    return own == own_target::account && context.account_slot >= 0 &&
           slot_of_account(id) == context.account_slot;
}

}  // namespace

required_privilege privilege_required(const std::string& path, int method) {
    if (method == GET) return {privilege_login, own_target::none};
    for (const auto& rule : change_rules) {
        if (under(path, rule.prefix)) return {rule.privileges, rule.own};
    }
    return {privilege_configure_manager, own_target::none};
}

bool caller_is_authorised(const request_context& context) {
    const role_definition* role = role_of_level(context.privilege);
    const unsigned granted = role ? role->privileges : 0;
    required_privilege required = privilege_required(context.uri, context.method);
    if ((granted & required.privileges) == required.privileges) return true;
    return (granted & privilege_configure_self) && is_own(context, required.own);
}

}  // namespace odata::redfish
