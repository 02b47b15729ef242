#include "security/privileges.h"

#include <string_view>

#include "security/account_slots.h"
#include "security/roles.h"
#include "security/session_store.h"

namespace odata::redfish {
namespace {

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

bool requirement_met(const method_requirement& requirement, unsigned granted, bool own) {
    for (unsigned set : requirement.sets) {
        if (set == 0) break;
        if ((granted & set) != set) continue;
        if (!(set & privilege_configure_self) || own) return true;
    }
    return false;
}

bool caller_is_authorised(const request_context& context, const route_privileges& privileges) {
    const role_definition* role = role_of_level(context.privilege);
    const unsigned granted = role ? role->privileges : 0;
    const method_requirement& requirement = privileges.of(context.method);
    // Ownership is looked up only when a ConfigureSelf set would decide.
    return requirement_met(requirement, granted, false) ||
           ((granted & privilege_configure_self) &&
            requirement_met(requirement, granted, is_own(context, privileges.own)));
}

}  // namespace odata::redfish
