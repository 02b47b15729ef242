#include "security/account_slots.h"

#include <cstring>

#include "platform/libipmi_users.h"

namespace odata::redfish {
namespace {

constexpr int last_slot = MAX_USER_SLOTS - 1;

// The platform's record of a slot; key 0 when it cannot be read.
St_UserInfo user_info(int slot) {
    St_UserInfo info{};
    LibSetUserIndex(slot);
    if (LibInitUserInfo(&info) != 0) info = St_UserInfo{};
    return info;
}

bool is_free(const St_UserInfo& info) { return info.key == 0 || info.name[0] == '\0'; }

}  // namespace

std::string account_uri(int account_id) {
    return std::string(accounts_uri) + "/" + std::to_string(account_id);
}

std::optional<account_record> read_account(int slot) {
    if (slot < reserved_administrator_slot || slot > last_slot) return std::nullopt;
    const St_UserInfo info = user_info(slot);
    if (is_free(info)) return std::nullopt;
    return account_record{slot, std::string(info.name, strnlen(info.name, sizeof info.name)),
                          info.lan_privilege, info.enabled != 0};
}

std::vector<int> listed_slots() {
    std::vector<int> slots;
    for (int slot = reserved_administrator_slot; slot <= last_slot; ++slot) {
        const int level = UtilGetLANPriv(slot);
        if (level >= PRIV_CALLBACK && level <= PRIV_ADMINISTRATOR) slots.push_back(slot);
    }
    return slots;
}

std::optional<int> first_free_slot() {
    for (int slot = first_creatable_slot; slot <= last_slot; ++slot) {
        if (is_free(user_info(slot))) return slot;
    }
    return std::nullopt;
}

}  // namespace odata::redfish
