// The simulated BMC user table: slots, persistence, the cross-process lock,
// first-boot seeding and open sessions of a user.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <string>
#include <vector>

#include "platform/libipmi_users.h"
#include "platform/session_record.h"
#include "platform/sim/user_table.h"
#include "sim_root_fixture.h"

namespace {

using sim_testing::add_user;
using sim_testing::file_text;
using sim_testing::run_in_child;
using sim_testing::start_child;
using sim_testing::wait_child;

class UserTable : public sim_testing::sim_root {
protected:
    void delete_user(int slot) {
        ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
        ASSERT_EQ(UtilDelUserName(slot), 0);
        ASSERT_EQ(UtilDelUserPassword(slot), 0);
        ASSERT_EQ(UtilSetUserEnable(slot, 0), 0);
        ASSERT_EQ(clear_user_privilege(slot), 0);
        ASSERT_EQ(PSCommit(), 0);
        ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    }

    St_UserInfo info_of(int slot) {
        St_UserInfo info;
        std::memset(&info, 0xAA, sizeof info);
        LibSetUserIndex(slot);
        EXPECT_EQ(LibGetUserIndex(), slot);
        EXPECT_EQ(LibInitUserInfo(&info), 0);
        return info;
    }

    // A session record as the service writes it, /tmp/redfish_<token>.
    void write_session(const std::string& token, int slot, std::size_t size = SESSION_RECORD_SIZE) {
        St_RedfishSession record;
        std::memset(&record, 0, sizeof record);
        std::strcpy(record.last_use, "1000000");
        const St_UserInfo user = info_of(slot);
        std::memcpy(record.user_name, user.name, sizeof record.user_name);
        record.account_slot = static_cast<int8_t>(slot);
        record.account_key = user.key;
        std::strcpy(record.client_ip, "10.0.0.1");
        record.session_id = 1;
        record.privilege = PRIV_ADMINISTRATOR;
        std::memcpy(record.token, token.data(),
                    std::min<std::size_t>(token.size(), SESSION_TOKEN_LEN));
        std::string bytes(reinterpret_cast<const char*>(&record), sizeof record);
        sim_testing::write_text(path("/tmp/redfish_" + token), bytes.substr(0, size));
    }
};

// ---------------------------------------------------------------- slots

TEST_F(UserTable, ChangesAreInMemoryUntilPscommitAndThenSurviveAReload) {
    ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
    ASSERT_EQ(UtilSetUserName(3, "alice"), 0);
    ASSERT_EQ(UtilSetUserPassword(3, "Passw0rd!"), 0);
    ASSERT_EQ(UtilSetLANPriv(3, PRIV_OPERATOR), 0);
    ASSERT_EQ(UtilSetUserEnable(3, 1), 0);
    // This process sees its change at once, the file does not have it yet.
    EXPECT_EQ(UtilFindUser("alice"), 3);
    EXPECT_FALSE(std::filesystem::exists(platform::user_table_file()));
    EXPECT_EQ(run_in_child([] {
                  platform::discard_user_table_changes();  // a forked child starts from the file
                  return UtilFindUser("alice") == -1 ? 0 : 1;
              }),
              0);
    ASSERT_EQ(PSCommit(), 0);
    ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    EXPECT_EQ(platform::user_table_file(), path("/nv/bmc/users"));

    platform::discard_user_table_changes();  // the next call loads the file
    EXPECT_EQ(UtilFindUser("alice"), 3);
    EXPECT_EQ(UtilCheckUserPassword(3, "Passw0rd!"), 0);
    EXPECT_EQ(UtilGetLANPriv(3), PRIV_OPERATOR);
    St_UserInfo info = info_of(3);
    EXPECT_NE(info.key, 0u);
    EXPECT_STREQ(info.name, "alice");
    EXPECT_EQ(info.lan_privilege, PRIV_OPERATOR);
    EXPECT_EQ(info.enabled, 1);

    // A fresh process (a child that loads the file anew) sees the same.
    int status = run_in_child([] {
        platform::discard_user_table_changes();
        return UtilFindUser("alice") == 3 && UtilCheckUserPassword(3, "Passw0rd!") == 0 &&
                       UtilGetLANPriv(3) == PRIV_OPERATOR
                   ? 0
                   : 1;
    });
    EXPECT_EQ(status, 0);
}

TEST_F(UserTable, ADamagedTableIsKeptForRepairNotOverwritten) {
    add_user(2, "alice", "Secret-Pass1", PRIV_ADMINISTRATOR);
    const std::string damaged = sim_testing::file_text(platform::user_table_file()).substr(0, 40);
    sim_testing::write_text(platform::user_table_file(), damaged);
    EXPECT_EQ(UtilFindUser("alice"), -1);
    ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
    ASSERT_EQ(UtilSetUserName(3, "mallory"), 0);
    EXPECT_NE(PSCommit(), 0);
    ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    EXPECT_EQ(sim_testing::file_text(platform::user_table_file()), damaged);
}

TEST_F(UserTable, DiscardedChangesAreGone) {
    ASSERT_EQ(UtilSetUserName(4, "temp"), 0);
    EXPECT_EQ(UtilFindUser("temp"), -1);  // not enabled yet
    EXPECT_EQ(UtilIsValidUserName("temp", 5), 1);
    platform::discard_user_table_changes();
    EXPECT_EQ(UtilIsValidUserName("temp", 5), 0);
}

// A change refused half-way is never committed: what was set before the
// refusal goes with the lock, and a later commit does not carry it.
TEST_F(UserTable, ChangesLeftUncommittedGoWithTheLock) {
    add_user(3, "bob", "Secret-Pass1", PRIV_USER);
    ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
    ASSERT_EQ(UtilSetUserName(3, "mallory"), 0);
    EXPECT_NE(UtilSetLANPriv(3, 99), 0);
    ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
    ASSERT_EQ(UtilSetUserEnable(4, 0), 0);
    ASSERT_EQ(PSCommit(), 0);
    ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    EXPECT_EQ(UtilFindUser("mallory"), -1);
    EXPECT_EQ(UtilFindUser("bob"), 3);
    EXPECT_EQ(file_text(platform::user_table_file()).find("mallory"), std::string::npos);
}

// A full disk, made by a file-size limit: the refused change leaves memory
// and file as they were, and the next good commit does not carry it.
TEST_F(UserTable, AFailedCommitForgetsItsChange) {
    add_user(2, "alice", "Secret-Pass1", PRIV_USER);
    int result = run_in_child([] {
        signal(SIGXFSZ, SIG_IGN);
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        rlimit tiny = limit;
        tiny.rlim_cur = 16;
        if (lx_mutex_get(USER_TABLE_MUTEX) != 0 || UtilSetUserName(3, "mallory") != 0 ||
            UtilSetLANPriv(3, PRIV_ADMINISTRATOR) != 0 ||
            UtilSetLANPriv(2, PRIV_ADMINISTRATOR) != 0 || setrlimit(RLIMIT_FSIZE, &tiny) != 0 ||
            PSCommit() == 0)
            return 1;
        setrlimit(RLIMIT_FSIZE, &limit);
        if (UtilIsValidUserName("mallory", 5) != 0 || UtilGetLANPriv(2) != PRIV_USER) return 2;
        if (UtilSetUserName(4, "dave") != 0 || PSCommit() != 0) return 3;
        lx_mutex_put(USER_TABLE_MUTEX);
        return 0;
    });
    ASSERT_EQ(result, 0);
    EXPECT_EQ(UtilIsValidUserName("mallory", 5), 0);
    EXPECT_EQ(UtilGetLANPriv(2), PRIV_USER);
    EXPECT_EQ(UtilIsValidUserName("dave", 5), 1);
    EXPECT_EQ(file_text(platform::user_table_file()).find("mallory"), std::string::npos);
}

TEST_F(UserTable, TheFileIsPrivateAndHoldsNoPlainPassword) {
    add_user(2, "alice", "Secret-Pass1", PRIV_ADMINISTRATOR);
    add_user(3, "bob", "Secret-Pass1", PRIV_USER);
    struct stat status;
    ASSERT_EQ(stat(platform::user_table_file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
    std::string text = file_text(platform::user_table_file());
    EXPECT_EQ(text.find("Secret-Pass1"), std::string::npos);
    EXPECT_NE(text.find("pbkdf2-sha256$10000$"), std::string::npos);
    // Salted: the same password hashes differently in two slots.
    auto first = text.find("pbkdf2-sha256$");
    auto second = text.find("pbkdf2-sha256$", first + 1);
    ASSERT_NE(second, std::string::npos);
    EXPECT_NE(text.substr(first, 110), text.substr(second, 110));
    EXPECT_EQ(UtilCheckUserPassword(2, "Secret-Pass1"), 0);
    EXPECT_EQ(UtilCheckUserPassword(3, "Secret-Pass1"), 0);
    // No temporary file is left beside it.
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(path("/nv/bmc")))
        files += entry.path().filename().string().rfind("users", 0) == 0;
    EXPECT_EQ(files, 1);
}

TEST_F(UserTable, AWrongPasswordOrAnEmptySlotFailsTheCheck) {
    add_user(2, "alice", "Secret-Pass1", PRIV_ADMINISTRATOR);
    EXPECT_NE(UtilCheckUserPassword(2, "Secret-Pass2"), 0);
    EXPECT_NE(UtilCheckUserPassword(2, "Secret-Pass"), 0);
    EXPECT_NE(UtilCheckUserPassword(2, ""), 0);
    EXPECT_NE(UtilCheckUserPassword(2, nullptr), 0);
    EXPECT_NE(UtilCheckUserPassword(3, "Secret-Pass1"), 0);
    EXPECT_NE(UtilCheckUserPassword(-1, "Secret-Pass1"), 0);
    EXPECT_NE(UtilCheckUserPassword(MAX_USER_SLOTS, "Secret-Pass1"), 0);
}

TEST_F(UserTable, NamesMatchOnTheirFirst16Characters) {
    add_user(2, "abcdefghijklmnop", "Secret-Pass1", PRIV_OPERATOR);
    EXPECT_EQ(UtilFindUser("abcdefghijklmnop"), 2);
    EXPECT_EQ(UtilFindUser("abcdefghijklmnopXYZ"), 2);
    EXPECT_EQ(UtilFindUser("abcdefghijklmno"), -1);
    EXPECT_EQ(UtilFindUser("abcdefghijklmnoq"), -1);
    EXPECT_EQ(UtilFindUser(""), -1);
    EXPECT_EQ(UtilFindUser(nullptr), -1);
    // Names longer than a slot holds are refused, not cut.
    EXPECT_NE(UtilSetUserName(3, "abcdefghijklmnopq"), 0);
    EXPECT_NE(UtilSetUserName(3, ""), 0);
    EXPECT_NE(UtilSetUserName(3, "two words"), 0);
    EXPECT_NE(UtilSetUserName(3, "tab\tname"), 0);
    EXPECT_NE(UtilSetUserName(3, nullptr), 0);
    EXPECT_EQ(UtilGetLANPriv(3), PRIV_NO_ACCESS);
}

TEST_F(UserTable, OnlyEnabledUsersAreFound) {
    add_user(2, "alice", "Secret-Pass1", PRIV_OPERATOR, false);
    EXPECT_EQ(UtilFindUser("alice"), -1);
    EXPECT_EQ(UtilGetLANPriv(2), PRIV_OPERATOR);
    ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
    ASSERT_EQ(UtilSetUserEnable(2, 1), 0);
    ASSERT_EQ(PSCommit(), 0);
    ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    EXPECT_EQ(UtilFindUser("alice"), 2);
}

TEST_F(UserTable, ADuplicateIsANameOfAnotherSlot) {
    add_user(2, "bob", "Secret-Pass1", PRIV_OPERATOR);
    add_user(4, "abcdefghijklmnop", "Secret-Pass1", PRIV_OPERATOR, false);
    EXPECT_EQ(UtilIsValidUserName("bob", 2), 0);  // its own name
    EXPECT_NE(UtilIsValidUserName("bob", 3), 0);
    EXPECT_NE(UtilIsValidUserName("bob", -1), 0);
    EXPECT_EQ(UtilIsValidUserName("bobby", 3), 0);
    EXPECT_EQ(UtilIsValidUserName("bo", 3), 0);
    // Disabled users hold their names too; the comparison is on 16 characters.
    EXPECT_NE(UtilIsValidUserName("abcdefghijklmnopZ", 3), 0);
    EXPECT_EQ(UtilIsValidUserName("abcdefghijklmnopZ", 4), 0);
    // Empty slots are nobody's duplicate.
    EXPECT_EQ(UtilIsValidUserName("", 3), 0);
    EXPECT_EQ(UtilIsValidUserName(nullptr, 3), 0);
    // The setter refuses a duplicate as well.
    EXPECT_NE(UtilSetUserName(3, "bob"), 0);
    EXPECT_EQ(UtilSetUserName(2, "bob"), 0);
}

TEST_F(UserTable, Slot0IsReservedAndBadArgumentsFail) {
    EXPECT_NE(UtilSetUserName(0, "zero"), 0);
    EXPECT_NE(UtilSetUserPassword(0, "Secret-Pass1"), 0);
    EXPECT_NE(UtilSetLANPriv(0, PRIV_ADMINISTRATOR), 0);
    EXPECT_NE(UtilSetUserEnable(0, 1), 0);
    EXPECT_NE(UtilSetUserName(MAX_USER_SLOTS, "sixteen"), 0);
    EXPECT_NE(UtilSetUserName(-1, "minus"), 0);
    EXPECT_EQ(UtilGetLANPriv(-1), -1);
    EXPECT_EQ(UtilGetLANPriv(MAX_USER_SLOTS), -1);
    EXPECT_NE(UtilSetLANPriv(2, 0), 0);
    EXPECT_NE(UtilSetLANPriv(2, 5), 0);
    EXPECT_EQ(UtilSetLANPriv(2, PRIV_NO_ACCESS), 0);
    EXPECT_NE(UtilSetUserPassword(2, ""), 0);
    EXPECT_NE(UtilSetUserPassword(2, "123456789012345678901"), 0);  // 21 characters
    EXPECT_EQ(UtilSetUserPassword(2, "12345678901234567890"), 0);
    EXPECT_NE(LibInitUserInfo(nullptr), 0);
    LibSetUserIndex(MAX_USER_SLOTS);
    St_UserInfo info;
    EXPECT_NE(LibInitUserInfo(&info), 0);
}

// ---------------------------------------------------------------- lx_mutex

TEST_F(UserTable, LxMutexNestsAndAPutWithoutAGetIsHarmless) {
    EXPECT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    EXPECT_NE(lx_mutex_get(99), 0);
    EXPECT_NE(lx_mutex_put(99), 0);
    ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
    ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
    EXPECT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    // Still held: another process cannot take it.
    EXPECT_EQ(run_in_child([] {
                  int fd = open(platform::user_table_lock_file().c_str(), O_RDWR);
                  return fd >= 0 && ::flock(fd, LOCK_EX | LOCK_NB) != 0 ? 0 : 1;
              }),
              0);
    EXPECT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    EXPECT_EQ(run_in_child([] {
                  int fd = open(platform::user_table_lock_file().c_str(), O_RDWR);
                  return fd >= 0 && ::flock(fd, LOCK_EX | LOCK_NB) == 0 ? 0 : 1;
              }),
              0);
    EXPECT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    EXPECT_EQ(platform::user_table_lock_file(), path("/var/bmc/user_table.lock"));
}

TEST_F(UserTable, TwoProcessesUnderLxMutexSeeEachOthersCommits) {
    int to_parent[2];
    ASSERT_EQ(pipe(to_parent), 0);
    ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
    ASSERT_EQ(UtilSetUserName(2, "parent"), 0);
    ASSERT_EQ(UtilSetUserPassword(2, "Parent-Pass1"), 0);
    ASSERT_EQ(UtilSetLANPriv(2, PRIV_ADMINISTRATOR), 0);
    ASSERT_EQ(UtilSetUserEnable(2, 1), 0);

    pid_t child = start_child([&] {
        close(to_parent[0]);
        // The child starts from the file, not from the parent's memory.
        platform::discard_user_table_changes();
        if (lx_mutex_get(USER_TABLE_MUTEX) != 0) return 10;
        char byte = 'L';
        if (write(to_parent[1], &byte, 1) != 1) return 11;
        if (UtilFindUser("parent") != 2 || UtilCheckUserPassword(2, "Parent-Pass1") != 0)
            return 12;  // the parent's commit is seen after the lock is taken
        if (UtilSetUserName(3, "child") != 0 || UtilSetUserPassword(3, "Child-Pass1") != 0 ||
            UtilSetLANPriv(3, PRIV_USER) != 0 || UtilSetUserEnable(3, 1) != 0 || PSCommit() != 0)
            return 13;
        lx_mutex_put(USER_TABLE_MUTEX);
        return 0;
    });
    close(to_parent[1]);
    // While the parent holds the lock the child waits.
    pollfd waiting = {to_parent[0], POLLIN, 0};
    EXPECT_EQ(poll(&waiting, 1, 300), 0);
    ASSERT_EQ(PSCommit(), 0);
    ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    char byte = 0;
    EXPECT_EQ(::read(to_parent[0], &byte, 1), 1);
    close(to_parent[0]);
    ASSERT_EQ(wait_child(child), 0);

    ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
    EXPECT_EQ(UtilFindUser("child"), 3);
    EXPECT_EQ(UtilCheckUserPassword(3, "Child-Pass1"), 0);
    EXPECT_EQ(UtilGetLANPriv(3), PRIV_USER);
    EXPECT_EQ(UtilFindUser("parent"), 2);
    ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
}

TEST_F(UserTable, ConcurrentProcessesLoseNoCommit) {
    std::vector<pid_t> children;
    for (int slot = 2; slot < MAX_USER_SLOTS; ++slot)
        children.push_back(start_child([slot] {
            platform::discard_user_table_changes();
            std::string name = "user" + std::to_string(slot);
            if (lx_mutex_get(USER_TABLE_MUTEX) != 0) return 1;
            int result = UtilSetUserName(slot, name.c_str()) | UtilSetUserEnable(slot, 1) |
                         UtilSetLANPriv(slot, PRIV_USER) | PSCommit();
            lx_mutex_put(USER_TABLE_MUTEX);
            return result == 0 ? 0 : 2;
        }));
    for (pid_t child : children) EXPECT_EQ(wait_child(child), 0);
    for (int slot = 2; slot < MAX_USER_SLOTS; ++slot)
        EXPECT_EQ(UtilFindUser(("user" + std::to_string(slot)).c_str()), slot);
}

TEST_F(UserTable, ACommitWithoutTheLockKeepsOtherSlotsOfOtherProcesses) {
    add_user(2, "first", "Secret-Pass1", PRIV_USER);
    // This process changes slot 4 without committing; another commits slot 3.
    ASSERT_EQ(UtilSetUserName(4, "mine"), 0);
    ASSERT_EQ(run_in_child([] {
                  platform::discard_user_table_changes();
                  return UtilSetUserName(3, "theirs") | UtilSetUserEnable(3, 1) | PSCommit();
              }),
              0);
    ASSERT_EQ(UtilSetUserEnable(4, 1), 0);
    ASSERT_EQ(PSCommit(), 0);
    EXPECT_EQ(UtilFindUser("first"), 2);
    EXPECT_EQ(UtilFindUser("theirs"), 3);
    EXPECT_EQ(UtilFindUser("mine"), 4);
}

TEST_F(UserTable, AReaderSeesACommitOfAnotherProcessWithoutTheLock) {
    add_user(2, "alice", "Secret-Pass1", PRIV_USER);
    EXPECT_EQ(UtilFindUser("alice"), 2);
    ASSERT_EQ(run_in_child([] { return UtilDelUserName(2) | PSCommit(); }), 0);
    EXPECT_EQ(UtilFindUser("alice"), -1);
}

// ---------------------------------------------------------------- seeding

TEST_F(UserTable, SeedFillsSlot1OnFirstBootOnly) {
    EXPECT_EQ(platform::seed_first_administrator("admin", "admin-pass1"),
              platform::seed_result::seeded);
    EXPECT_EQ(UtilFindUser("admin"), 1);
    EXPECT_EQ(UtilGetLANPriv(1), PRIV_ADMINISTRATOR);
    EXPECT_EQ(UtilCheckUserPassword(1, "admin-pass1"), 0);
    EXPECT_EQ(UtilGetLANPriv(0), PRIV_NO_ACCESS);
    EXPECT_STREQ(info_of(0).name, "");
    struct stat status;
    ASSERT_EQ(stat(platform::user_table_file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
    EXPECT_EQ(file_text(platform::user_table_file()).find("admin-pass1"), std::string::npos);

    // The administrator changed the password since: a second seed keeps it.
    ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
    ASSERT_EQ(UtilSetUserPassword(1, "changed-pass"), 0);
    ASSERT_EQ(PSCommit(), 0);
    ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    EXPECT_EQ(platform::seed_first_administrator("admin", "admin-pass1"),
              platform::seed_result::exists);
    EXPECT_EQ(platform::seed_first_administrator("other", "other-pass"),
              platform::seed_result::exists);
    EXPECT_EQ(UtilCheckUserPassword(1, "changed-pass"), 0);
    EXPECT_EQ(UtilFindUser("other"), -1);
}

TEST_F(UserTable, SeedLeavesAnExistingTableAlone) {
    add_user(2, "alice", "Secret-Pass1", PRIV_USER);
    EXPECT_EQ(platform::seed_first_administrator("admin", "admin-pass1"),
              platform::seed_result::exists);
    EXPECT_EQ(UtilFindUser("admin"), -1);
    EXPECT_EQ(UtilGetLANPriv(1), PRIV_NO_ACCESS);
}

TEST_F(UserTable, SeedRefusesBadNamesAndPasswords) {
    EXPECT_EQ(platform::seed_first_administrator("", "admin-pass1"), platform::seed_result::failed);
    EXPECT_EQ(platform::seed_first_administrator("admin", ""), platform::seed_result::failed);
    EXPECT_EQ(platform::seed_first_administrator("a b", "admin-pass1"),
              platform::seed_result::failed);
    EXPECT_FALSE(std::filesystem::exists(platform::user_table_file()));
}

// ---------------------------------------------------------------- sessions

TEST_F(UserTable, AnOpenSessionIsARecordOfTheSlotsCurrentUser) {
    add_user(2, "alice", "Secret-Pass1", PRIV_USER);
    add_user(3, "bob", "Secret-Pass1", PRIV_USER);
    EXPECT_EQ(UtilIsUserActivateSession(2), 0);

    write_session("abcdefghijklmnopqrstuvwxyz123456", 2);
    EXPECT_NE(UtilIsUserActivateSession(2), 0);
    EXPECT_EQ(UtilIsUserActivateSession(3), 0);

    // The file name proves nothing, nor does a record that is too short.
    write_session("bob", 2);
    write_session("short0000000000000000000000000000", 3, 100);
    EXPECT_EQ(UtilIsUserActivateSession(3), 0);
    // Empty slots have no sessions.
    EXPECT_EQ(UtilIsUserActivateSession(5), 0);
    EXPECT_EQ(UtilIsUserActivateSession(-1), 0);

    // A rename keeps the sessions; a new user of the slot has none of the old one's.
    ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
    ASSERT_EQ(UtilSetUserName(2, "carol"), 0);
    ASSERT_EQ(PSCommit(), 0);
    ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    EXPECT_NE(UtilIsUserActivateSession(2), 0);
    delete_user(2);
    add_user(2, "alice", "Secret-Pass1", PRIV_USER);
    EXPECT_EQ(UtilIsUserActivateSession(2), 0);
}

}  // namespace
