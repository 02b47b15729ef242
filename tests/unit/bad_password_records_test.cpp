// Lockout of the simulated BMC's users: the account policy of
// accountservice.ini and the bad-password records.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "platform/libipmi_users.h"
#include "platform/sim/user_lockout.h"
#include "platform/sim/user_table.h"
#include "sim_root_fixture.h"

namespace {

using sim_testing::fake_now;
using sim_testing::run_in_child;

class Lockout : public sim_testing::sim_root {
protected:
    void SetUp() override {
        sim_root::SetUp();
        add_user(2, "alice");
        add_user(3, "bob");
    }

    void add_user(int slot, const char* name) {
        ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
        ASSERT_EQ(UtilSetUserName(slot, name), 0);
        ASSERT_EQ(UtilSetUserPassword(slot, "Secret-Pass1"), 0);
        ASSERT_EQ(UtilSetLANPriv(slot, PRIV_OPERATOR), 0);
        ASSERT_EQ(UtilSetUserEnable(slot, 1), 0);
        ASSERT_EQ(PSCommit(), 0);
        ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    }

    void policy(const std::string& keys) {
        sim_testing::write_text(path("/nv/redfish/accountservice.ini"),
                                "[AccountService]\n" + keys);
        EXPECT_EQ(LoadUserLockFromFile(), 0);
    }

    // n bad passwords, step seconds apart, starting now.
    void fail(int slot, int n, long step = 1) {
        for (int i = 0; i < n; ++i) {
            if (i > 0) fake_now += step;
            ASSERT_GE(AddBadPwdRecords(slot), 0);
        }
    }
};

TEST_F(Lockout, ThePolicyHasDefaultsAndIsReadFromTheIni) {
    platform::lockout_policy defaults = platform::read_lockout_policy();
    EXPECT_EQ(defaults.threshold, 5);
    EXPECT_EQ(defaults.duration, 60);
    EXPECT_EQ(defaults.reset_after, 60);
    EXPECT_TRUE(defaults.enabled);
    EXPECT_EQ(platform::account_policy_file(), path("/nv/redfish/accountservice.ini"));
    policy(
        "AccountLockoutThreshold=3\nAccountLockoutDuration=60\nAccountLockoutCounterResetAfter=30\n"
        "AccountLockoutEnabled=0\n");
    platform::lockout_policy read = platform::read_lockout_policy();
    EXPECT_EQ(read.threshold, 3);
    EXPECT_EQ(read.duration, 60);
    EXPECT_EQ(read.reset_after, 30);
    EXPECT_FALSE(read.enabled);
    // A file that cannot be parsed is the defaults.
    sim_testing::write_text(path("/nv/redfish/accountservice.ini"), "[AccountService\nx");
    EXPECT_EQ(platform::read_lockout_policy().threshold, 5);
}

TEST_F(Lockout, ThresholdReachedWithinTheWindowLocks) {
    policy(
        "AccountLockoutThreshold=3\nAccountLockoutDuration=120\nAccountLockoutCounterResetAfter="
        "60\n");
    fail(2, 2, 10);
    EXPECT_EQ(isUserLocked(2), 0);
    EXPECT_EQ(platform::bad_password_count(2), 2);
    fake_now += 10;
    ASSERT_GE(AddBadPwdRecords(2), 0);
    EXPECT_NE(isUserLocked(2), 0);
    EXPECT_EQ(isUserLocked(3), 0);  // per slot
    // The state is shared: another process sees the lock.
    EXPECT_EQ(run_in_child([] { return isUserLocked(2) ? 0 : 1; }), 0);
    struct stat status;
    ASSERT_EQ(stat(platform::lockout_file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
    EXPECT_EQ(platform::lockout_file(), path("/var/bmc/lockout"));
}

TEST_F(Lockout, RecordsOlderThanTheWindowDoNotCount) {
    policy(
        "AccountLockoutThreshold=3\nAccountLockoutDuration=120\nAccountLockoutCounterResetAfter="
        "60\n");
    fail(2, 1);  // t0
    fake_now += 30;
    fail(2, 1);  // t0 + 30
    fake_now += 30;
    fail(2, 1);  // t0 + 60: the first is 60 seconds old and no longer counts
    EXPECT_EQ(isUserLocked(2), 0);
    EXPECT_EQ(platform::bad_password_count(2), 2);
    fake_now += 29;
    fail(2, 1);  // t0 + 89: the records of t0 + 30, t0 + 60 and this one
    EXPECT_NE(isUserLocked(2), 0);
}

TEST_F(Lockout, RecordsFromOtherProcessesAddUp) {
    policy(
        "AccountLockoutThreshold=3\nAccountLockoutDuration=120\nAccountLockoutCounterResetAfter="
        "60\n");
    fail(2, 1);
    EXPECT_EQ(run_in_child([] { return (AddBadPwdRecords(2) < 0) | (AddBadPwdRecords(2) < 0); }),
              0);
    EXPECT_NE(isUserLocked(2), 0);
}

TEST_F(Lockout, Threshold0OrLockoutDisabledNeverLocks) {
    fail(2, 5);  // no policy file: five bad passwords lock
    EXPECT_NE(isUserLocked(2), 0);
    UnlockUser(2);
    policy("AccountLockoutThreshold=0\nAccountLockoutDuration=120\n");
    fail(2, 20);
    EXPECT_EQ(isUserLocked(2), 0);
    policy("AccountLockoutThreshold=2\nAccountLockoutEnabled=0\n");
    fail(3, 20);
    EXPECT_EQ(isUserLocked(3), 0);
}

TEST_F(Lockout, TheLockExpiresAfterTheDuration) {
    policy(
        "AccountLockoutThreshold=2\nAccountLockoutDuration=120\nAccountLockoutCounterResetAfter="
        "60\n");
    fail(2, 2);
    EXPECT_NE(isUserLocked(2), 0);
    fake_now += 119;
    EXPECT_NE(isUserLocked(2), 0);
    // While locked, bad passwords are not recorded (the lock does not grow).
    fail(2, 1);
    fake_now += 1;
    EXPECT_EQ(isUserLocked(2), 0);
    EXPECT_EQ(platform::bad_password_count(2), 0);
    // After the lock, counting starts again.
    fail(2, 1);
    EXPECT_EQ(isUserLocked(2), 0);
    fail(2, 1);
    EXPECT_NE(isUserLocked(2), 0);
}

TEST_F(Lockout, Duration0LocksUntilUnlockUser) {
    policy(
        "AccountLockoutThreshold=1\nAccountLockoutDuration=0\nAccountLockoutCounterResetAfter="
        "60\n");
    fail(2, 1);
    EXPECT_NE(isUserLocked(2), 0);
    fake_now += 10000000;
    EXPECT_NE(isUserLocked(2), 0);
    EXPECT_EQ(LoadUserLockFromFile(), 0);
    EXPECT_NE(isUserLocked(2), 0);
    EXPECT_EQ(UnlockUser(2), 0);
    EXPECT_EQ(isUserLocked(2), 0);
    EXPECT_EQ(platform::bad_password_count(2), 0);
}

TEST_F(Lockout, UnlockUserClearsTheLockAndTheRecords) {
    policy(
        "AccountLockoutThreshold=3\nAccountLockoutDuration=300\nAccountLockoutCounterResetAfter="
        "300\n");
    fail(2, 3);
    ASSERT_NE(isUserLocked(2), 0);
    EXPECT_EQ(run_in_child([] { return UnlockUser(2); }), 0);
    EXPECT_EQ(isUserLocked(2), 0);
    fail(2, 2);
    EXPECT_EQ(UnlockUser(2), 0);
    EXPECT_EQ(platform::bad_password_count(2), 0);
    fail(2, 2);
    EXPECT_EQ(isUserLocked(2), 0);
}

TEST_F(Lockout, ClearBadPasswordRecordsStartsTheCountAgain) {
    policy(
        "AccountLockoutThreshold=3\nAccountLockoutDuration=300\nAccountLockoutCounterResetAfter="
        "300\n");
    fail(2, 2);
    EXPECT_EQ(ClearBadPwdRecords(2), 0);
    EXPECT_EQ(platform::bad_password_count(2), 0);
    fail(2, 2);
    EXPECT_EQ(isUserLocked(2), 0);
    // Clearing the records does not end a lock.
    fail(2, 1);
    ASSERT_NE(isUserLocked(2), 0);
    EXPECT_EQ(ClearBadPwdRecords(2), 0);
    EXPECT_NE(isUserLocked(2), 0);
}

TEST_F(Lockout, AShorterDurationAppliesToARunningLock) {
    policy(
        "AccountLockoutThreshold=1\nAccountLockoutDuration=600\nAccountLockoutCounterResetAfter="
        "60\n");
    fail(2, 1);
    fake_now += 100;
    ASSERT_NE(isUserLocked(2), 0);
    policy(
        "AccountLockoutThreshold=1\nAccountLockoutDuration=60\nAccountLockoutCounterResetAfter="
        "60\n");
    EXPECT_EQ(isUserLocked(2), 0);
}

TEST_F(Lockout, ANewUserOfTheSlotInheritsNoLock) {
    policy("AccountLockoutThreshold=1\nAccountLockoutDuration=0\n");
    fail(2, 1);
    ASSERT_NE(isUserLocked(2), 0);
    ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
    ASSERT_EQ(UtilDelUserName(2), 0);
    ASSERT_EQ(PSCommit(), 0);
    ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    EXPECT_EQ(isUserLocked(2), 0);
    add_user(2, "carol");
    EXPECT_EQ(isUserLocked(2), 0);
}

TEST_F(Lockout, BadArgumentsFailAndLoadIsHarmless) {
    EXPECT_NE(AddBadPwdRecords(-1), 0);
    EXPECT_NE(AddBadPwdRecords(MAX_USER_SLOTS), 0);
    EXPECT_NE(AddBadPwdRecords(7), 0);  // an empty slot
    EXPECT_EQ(isUserLocked(-1), 0);
    EXPECT_EQ(isUserLocked(7), 0);
    EXPECT_NE(UnlockUser(99), 0);
    EXPECT_NE(ClearBadPwdRecords(99), 0);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(LoadUserLockFromFile(), 0);
    // A damaged state file reads as no records.
    sim_testing::write_text(platform::lockout_file(), "not json");
    EXPECT_EQ(isUserLocked(2), 0);
    EXPECT_EQ(AddBadPwdRecords(2), 1);
    EXPECT_EQ(platform::bad_password_count(2), 1);
}

}  // namespace
