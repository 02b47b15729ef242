#include "security/session_account.h"

#include <cstring>

#include "platform/libipmi_users.h"

namespace odata::redfish {
namespace {

std::optional<St_UserInfo> slot_user(int slot) {
    if (slot < 0 || slot >= MAX_USER_SLOTS) return std::nullopt;
    St_UserInfo info{};
    LibSetUserIndex(slot);
    if (LibInitUserInfo(&info) != 0 || info.key == 0 || info.name[0] == '\0') return std::nullopt;
    return info;
}

}  // namespace

std::optional<session_owner> local_owner(int slot, uint8_t source) {
    std::optional<St_UserInfo> user = slot_user(slot);
    if (!user) return std::nullopt;
    return session_owner{std::string(user->name, strnlen(user->name, sizeof user->name)),
                         user->lan_privilege, source, slot, user->key};
}

std::string session_user_name(const St_RedfishSession& record) {
    return std::string(record.user_name, strnlen(record.user_name, sizeof record.user_name));
}

bool follow_account(St_RedfishSession& record) {
    if (record.account_slot < 0) return true;
    std::optional<St_UserInfo> user = slot_user(record.account_slot);
    if (!user || !user->enabled || user->key != record.account_key ||
        session_user_name(record) !=
            std::string(user->name, strnlen(user->name, sizeof user->name)))
        return false;
    record.privilege = user->lan_privilege;
    return true;
}

}  // namespace odata::redfish
