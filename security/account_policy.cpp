#include "security/account_policy.h"

namespace odata::redfish {

const ini_settings& account_policy_file() {
    static const ini_settings file("/nv/redfish/accountservice.ini");
    return file;
}

account_policy read_account_policy() {
    const boost::property_tree::ptree settings = account_policy_file().read();
    const account_policy defaults;
    account_policy policy;
    policy.lockout_threshold =
        settings.get<long>("AccountService.AccountLockoutThreshold", defaults.lockout_threshold);
    policy.lockout_duration =
        settings.get<long>("AccountService.AccountLockoutDuration", defaults.lockout_duration);
    policy.counter_reset_after = settings.get<long>(
        "AccountService.AccountLockoutCounterResetAfter", defaults.counter_reset_after);
    policy.failure_logging_threshold = settings.get<long>(
        "AccountService.AuthFailureLoggingThreshold", defaults.failure_logging_threshold);
    policy.lockout_enabled = settings.get<long>("AccountService.AccountLockoutEnabled", 1) != 0;
    return policy;
}

bool stage_account_policy(const account_policy& policy, settings_batch& batch) {
    boost::property_tree::ptree settings = account_policy_file().read();
    settings.put("AccountService.AccountLockoutThreshold", policy.lockout_threshold);
    settings.put("AccountService.AccountLockoutDuration", policy.lockout_duration);
    settings.put("AccountService.AccountLockoutCounterResetAfter", policy.counter_reset_after);
    settings.put("AccountService.AccountLockoutEnabled", policy.lockout_threshold > 0 ? 1 : 0);
    return batch.put(account_policy_file(), settings);
}

}  // namespace odata::redfish
