#include "security/session_account.h"

#include <cstring>

#include "platform/libdirectory.h"
#include "platform/libipmi_users.h"
#include "security/roles.h"

namespace odata::redfish {
namespace {

std::optional<St_UserInfo> slot_user(int slot) {
    if (slot < 0 || slot >= MAX_USER_SLOTS) return std::nullopt;
    St_UserInfo info{};
    LibSetUserIndex(slot);
    if (LibInitUserInfo(&info) != 0 || info.key == 0 || info.name[0] == '\0') return std::nullopt;
    return info;
}

// Whether whoever let a user in from outside the user table still would:
// its directory still enabled, the host firmware's credential still there.
bool outside_account_holds(const St_RedfishSession& record) {
    switch (record.source) {
        case SESSION_SOURCE_LDAP:
            return UtilGetLdapEnable() != 0;
        case SESSION_SOURCE_AD:
            return UtilGetNewADEnable() != 0;
        case SESSION_SOURCE_RADIUS:
            return UtilGetRadiusEnable() != 0;
        case SESSION_SOURCE_HOST_INTERFACE:
            return UtilGetHostInterfaceEnable() != 0 &&
                   UtilIsExistHostFWUserInfo(std::string(session_user_name(record)).c_str(),
                                             nullptr) != 0;
        default:
            return false;
    }
}

}  // namespace

std::optional<session_owner> local_owner(int slot, uint8_t source) {
    std::optional<St_UserInfo> user = slot_user(slot);
    if (!user) return std::nullopt;
    return session_owner{std::string(user->name, strnlen(user->name, sizeof user->name)),
                         user->lan_privilege, source, slot, user->key};
}

std::string_view session_user_name(const St_RedfishSession& record) {
    return std::string_view(record.user_name, strnlen(record.user_name, sizeof record.user_name));
}

bool follow_account(St_RedfishSession& record) {
    if (record.account_slot < 0) return outside_account_holds(record);
    std::optional<St_UserInfo> user = slot_user(record.account_slot);
    if (!user || !user->enabled || user->key != record.account_key ||
        !role_of_level(user->lan_privilege) ||
        session_user_name(record) !=
            std::string_view(user->name, strnlen(user->name, sizeof user->name)))
        return false;
    record.privilege = user->lan_privilege;
    return true;
}

bool usable_over_this_channel(const St_RedfishSession& record) {
    return record.source != SESSION_SOURCE_HOST_INTERFACE || UtilIsHostInterface() != 0;
}

}  // namespace odata::redfish
