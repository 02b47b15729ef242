#include "security/account_writer.h"

#include "frontend/exception_http.h"
#include "platform/libipmi_users.h"
#include "platform/libweb.h"
#include "security/account_events.h"
#include "security/roles.h"
#include "security/user_table_lock.h"

namespace odata::redfish {
namespace {

constexpr int snmp_daemon_restart = 1;

// Selects the slot and loads its record, as the platform wants before a change.
void select_slot(int slot) {
    St_UserInfo info{};
    LibSetUserIndex(slot);
    LibInitUserInfo(&info);
}

account_write write_slot(int slot, const account_changes& changes) {
    select_slot(slot);
    const bool accepted =
        (!changes.user_name || UtilSetUserName(slot, changes.user_name->c_str()) == 0) &&
        (!changes.password || UtilSetUserPassword(slot, changes.password->c_str()) == 0) &&
        (!changes.privilege || UtilSetLANPriv(slot, *changes.privilege) == 0) &&
        (!changes.enabled || UtilSetUserEnable(slot, *changes.enabled ? 1 : 0) == 0);
    // What was set before a refused value is dropped with the lock.
    if (!accepted) return account_write::refused;
    return PSCommit() == 0 ? account_write::done : account_write::not_stored;
}

// Keeps the stored protocols that the request does not name; a key that it
// does not name stays as it is.
bool save_snmp(int slot, const snmp_settings& settings) {
    int authentication = 0;
    int encryption = 0;
    UtilSNMPGetCfg(slot, &authentication, nullptr, &encryption, nullptr);
    const char* authentication_key =
        settings.authentication_key ? settings.authentication_key->c_str() : nullptr;
    const char* encryption_key =
        settings.encryption_key ? settings.encryption_key->c_str() : nullptr;
    return UtilSNMPSaveCfg(slot, settings.authentication_protocol.value_or(authentication),
                           authentication_key, settings.encryption_protocol.value_or(encryption),
                           encryption_key) == 0 &&
           setSNMPDaemonOP(snmp_daemon_restart) == 0;
}

std::string level_text(int level) { return std::string(level_log_text(level)); }

void log_changes(const account_record& account, const account_changes& changes,
                 bool outside_applied) {
    const std::string name = changes.user_name.value_or(account.user_name);
    if (changes.user_name)
        log_account_change(account_of_slot(account.slot), "user name set to " + name);
    if (changes.password) log_account_change(name, "password changed");
    if (changes.privilege)
        log_account_change(name, "privilege set to " + level_text(*changes.privilege));
    if (changes.enabled)
        log_account_change(name, *changes.enabled ? "account enabled" : "account disabled");
    if (changes.unlock && outside_applied) log_account_change(name, "account unlocked");
    if (changes.snmp && outside_applied) log_account_change(name, "SNMP settings changed");
}

// Unlocking and the SNMP settings live outside the user table.
bool apply_outside_table(int slot, const account_changes& changes) {
    const bool applied = (!changes.unlock || UnlockUser(slot) == 0) &&
                         (!changes.snmp || save_snmp(slot, *changes.snmp));
    if (!applied)
        console_log("[ERROR] cannot store the lockout or SNMP settings of account %d\n",
                    account_of_slot(slot));
    return applied;
}

}  // namespace

created_account create_account(const account_changes& account) {
    account_changes enabled_by_default = account;
    enabled_by_default.enabled = account.enabled.value_or(true);
    int slot = 0;
    {
        user_table_lock lock;
        if (!lock.held()) return {account_write::not_stored, false, 0};
        std::optional<int> free_slot = first_free_slot();
        if (!free_slot) return {account_write::refused, true, 0};
        const account_write written = write_slot(*free_slot, enabled_by_default);
        if (written != account_write::done) return {written, false, 0};
        slot = *free_slot;
        log_account_change(*account.user_name,
                           "account created as " + level_text(*account.privilege));
    }
    if (account.snmp && !save_snmp(slot, *account.snmp))
        console_log("[ERROR] cannot store the SNMP settings of account %d\n",
                    account_of_slot(slot));
    return {account_write::done, false, slot};
}

account_write modify_account(const account_record& account, const account_changes& changes) {
    {
        user_table_lock lock;
        if (!lock.held()) return account_write::not_stored;
        const account_write written = write_slot(account.slot, changes);
        if (written != account_write::done) return written;
    }
    const bool applied = apply_outside_table(account.slot, changes);
    log_changes(account, changes, applied);
    return applied ? account_write::done : account_write::not_stored;
}

account_write remove_account(const account_record& account) {
    user_table_lock lock;
    if (!lock.held()) return account_write::not_stored;
    select_slot(account.slot);
    if (UtilDelUserName(account.slot) != 0 || UtilDelUserPassword(account.slot) != 0 ||
        UtilSetUserEnable(account.slot, 0) != 0 || clear_user_privilege(account.slot) != 0)
        return account_write::refused;
    if (PSCommit() != 0) return account_write::not_stored;
    log_account_change(account_of_slot(account.slot), "account " + account.user_name + " deleted");
    return account_write::done;
}

void check_account_written(account_write outcome) {
    if (outcome == account_write::refused) throw_http_error(400, "Base.1.10.AccountNotModified");
    if (outcome == account_write::not_stored) throw_http_error(500, "Base.1.10.InternalError");
}

}  // namespace odata::redfish
