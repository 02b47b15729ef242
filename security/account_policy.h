// The local accounts' policy: the lockout settings kept in
// /nv/redfish/accountservice.ini, section [AccountService], and the fixed
// password limits.
#pragma once

#include "framework/ini_settings.h"

namespace odata::redfish {

constexpr int min_password_length = 8;
constexpr int max_password_length = 20;

constexpr long max_lockout_threshold = 5;
constexpr long max_lockout_seconds = 1800;

// Out of the box a guessed password locks the account for a minute after
// five tries.
struct account_policy {
    long lockout_threshold = 5;          // bad passwords that lock; 0 never locks
    long lockout_duration = 60;          // seconds locked
    long counter_reset_after = 60;       // seconds a bad password counts
    long failure_logging_threshold = 3;  // every so many bad passwords of a user are logged
    bool lockout_enabled = true;         // AccountLockoutEnabled, which follows the threshold
};

// The stored policy; defaults for what the file does not hold.
account_policy read_account_policy();

// The file that holds the policy, for its lock.
const ini_settings& account_policy_file();

// Puts the policy (and the lockout switch that follows from the threshold)
// into batch, keeping the file's other keys; the caller holds the file's
// lock. False when the settings cannot be written.
bool stage_account_policy(const account_policy& policy, settings_batch& batch);

}  // namespace odata::redfish
