#include "security/credentials.h"

#include <cstring>

#include "platform/libdirectory.h"
#include "platform/libipmi_users.h"
#include "platform/libweb.h"
#include "security/account_lockout.h"
#include "security/account_policy.h"
#include "security/roles.h"

namespace odata::redfish {
namespace {

constexpr size_t max_user_name = 255;

struct external_provider {
    int (*enabled)();
    int (*authenticate)(const char*, const char*, int*);
    uint8_t source;
};

// Asked in this order when the name is not a local user or its password is wrong.
constexpr external_provider external_providers[] = {
    {UtilGetNewADEnable, AuthADProcess2, SESSION_SOURCE_AD},
    {UtilGetLdapEnable, AuthLdapProcess2, SESSION_SOURCE_LDAP},
    {UtilGetRadiusEnable, AuthRadiusProcess, SESSION_SOURCE_RADIUS},
};

credential_check check_external(const std::string& user_name, const std::string& password) {
    for (const auto& provider : external_providers) {
        int privilege = 0;
        if (provider.enabled() &&
            provider.authenticate(user_name.c_str(), password.c_str(), &privilege) == 0)
            return {credential_check::accepted, -1, user_name, privilege, provider.source};
    }
    return {};
}

std::string stored_name(int slot) {
    St_UserInfo info{};
    LibSetUserIndex(slot);
    if (LibInitUserInfo(&info) != 0) return {};
    return std::string(info.name, strnlen(info.name, sizeof info.name));
}

credential_check check_password(int slot, const std::string& user_name,
                                const std::string& password) {
    if (UtilCheckUserPassword(slot, password.c_str()) == 0)
        return {credential_check::accepted, slot, stored_name(slot), UtilGetLANPriv(slot),
                SESSION_SOURCE_LOCAL};
    // Only a request that came over the host interface may use its credential.
    if (UtilIsHostInterface() && UtilIsExistHostFWUserInfo(user_name.c_str(), password.c_str()))
        return {credential_check::accepted, -1, user_name, PRIV_ADMINISTRATOR,
                SESSION_SOURCE_HOST_INTERFACE};
    return check_external(user_name, password);
}

// A local user's bad passwords are logged every AuthFailureLoggingThreshold
// of them; other names' always are.
bool failure_logged(int slot, int counted_failures) {
    const long threshold = read_account_policy().failure_logging_threshold;
    return slot < 0 || threshold <= 1 || counted_failures % threshold == 0;
}

credential_check refuse_failure(int slot, const std::string& subject) {
    credential_check check;
    const std::optional<int> counted = record_failure(subject);
    if (!counted)
        console_log("[ERROR] cannot record a bad password of %s; login refused\n", subject.c_str());
    check.log_failure = !counted || failure_logged(slot, *counted);
    return check;
}

}  // namespace

credential_check check_credentials(const std::string& user_name, const std::string& password,
                                   const std::string& client_ip) {
    if (user_name.size() > max_user_name) return {};
    const int slot = UtilFindUser(user_name.c_str());
    const std::string subject = lockout_subject(slot, user_name, client_ip);
    if (subject_locked(subject)) return {credential_check::locked, slot};

    credential_check check = check_password(slot, user_name, password);
    if (check.result != credential_check::accepted) return refuse_failure(slot, subject);
    clear_failures(subject);
    if (!role_of_level(check.privilege)) return {};  // an account without a role
    // Without its audit line a login would leave no trace: refused.
    if (UtilSessionAduit(check.name.c_str(), client_ip.c_str(), 1) != 0) {
        console_log("[ERROR] cannot audit the login of %s; login refused\n", check.name.c_str());
        return {};
    }
    return check;
}

}  // namespace odata::redfish
