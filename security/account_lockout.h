// Lockout: bad passwords counted per subject in the platform's bad-password
// records and judged by the account policy (account_policy.h).
#pragma once

#include <optional>
#include <string>

namespace odata::redfish {

// Whom a bad password counts against: a local user's slot (the reserved
// administrator's only from the caller's address, so that nobody on the
// network locks it for everyone), or a name that is no local user, on its
// first 16 characters as names compare, so that such names lock like users.
std::string lockout_subject(int slot, const std::string& user_name, const std::string& source);

// Whether the subject is locked now; unreadable records count as locked.
bool subject_locked(const std::string& subject);

// Records a bad password and locks the subject when the policy says so.
// The failures that count now, or none when they cannot be recorded.
std::optional<int> record_failure(const std::string& subject);

// A good password forgets the subject's bad ones.
void clear_failures(const std::string& subject);

// Whether the slot's user is locked for a caller from source.
bool account_locked(int slot, const std::string& source);

}  // namespace odata::redfish
