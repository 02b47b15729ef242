// Lockout of the simulated BMC's users.
//
// Policy: <root>/nv/redfish/accountservice.ini, section [AccountService]:
//   AccountLockoutThreshold          bad passwords that lock (0: never; default 5)
//   AccountLockoutDuration           seconds locked (0: until UnlockUser; default 60)
//   AccountLockoutCounterResetAfter  seconds a bad password counts (0: until
//                                    cleared; default 60)
//   AccountLockoutEnabled            0 or 1 (default 1)
// It is read at every call, so a changed policy holds at once.
//
// State: <root>/var/bmc/lockout, a JSON document written through a
// temporary file and rename under an flock on <root>/var/bmc/lockout.lock:
//   {"format":1,"slots":[{"slot":1,"key":<user key>,"failures":[<time>...],
//                         "locked_at":<time, 0 when not locked>}]}
// An entry whose key is not the slot's current record key belongs to an
// earlier user of the slot and is ignored.
//
// Arithmetic: a bad password made at time t counts while now - t is less
// than CounterResetAfter. When AddBadPwdRecords brings the counted records
// to Threshold (with lockout enabled and Threshold > 0) the slot is locked
// at that moment and its records are dropped. A lock lasts while now -
// locked_at is less than Duration; isUserLocked clears an expired lock.
// While lockout is disabled or Threshold is 0, isUserLocked answers 0.
#pragma once

#include <string>

namespace platform {

std::string lockout_file();
std::string account_policy_file();

struct lockout_policy {
    long long threshold = 5;
    long long duration = 60;
    long long reset_after = 60;
    bool enabled = true;
};

// The policy as the file says now (defaults for what is missing).
lockout_policy read_lockout_policy();

// Counted bad-password records of a slot now (for the tool and tests).
int bad_password_count(int slot);

// The clock of the lockout functions; nullptr restores lx_time_get. Only
// for tests.
void set_lockout_clock_for_tests(long (*clock)());

}  // namespace platform
