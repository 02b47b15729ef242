#include "security/credentials.h"

#include "platform/libdirectory.h"
#include "platform/libipmi_users.h"
#include "security/account_policy.h"

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
            return {credential_check::accepted, -1, privilege, provider.source};
    }
    return {};
}

// A local user's bad passwords are logged every AuthFailureLoggingThreshold
// of them; bad names always are.
bool failure_logged(int counted_failures) {
    const long threshold = read_account_policy().failure_logging_threshold;
    return threshold <= 1 || counted_failures <= 0 || counted_failures % threshold == 0;
}

}  // namespace

credential_check check_credentials(const std::string& user_name, const std::string& password,
                                   const std::string& client_ip) {
    if (user_name.size() > max_user_name) return {};
    const int slot = UtilFindUser(user_name.c_str());
    if (slot >= 0 && isUserLocked(slot)) return {credential_check::locked, slot};

    credential_check check;
    if (UtilCheckUserPassword(slot, password.c_str()) == 0) {
        check = {credential_check::accepted, slot, UtilGetLANPriv(slot), SESSION_SOURCE_LOCAL};
    } else if (UtilIsHostInterface() &&
               UtilIsExistHostFWUserInfo(user_name.c_str(), password.c_str())) {
        check = {credential_check::accepted, -1, PRIV_ADMINISTRATOR, SESSION_SOURCE_LOCAL};
    } else {
        check = check_external(user_name, password);
    }

    if (check.result == credential_check::accepted) {
        if (slot >= 0) ClearBadPwdRecords(slot);
        UtilSessionAduit(user_name.c_str(), client_ip.c_str(), 1);
    } else {
        check.log_failure = failure_logged(AddBadPwdRecords(slot));
    }
    return check;
}

}  // namespace odata::redfish
