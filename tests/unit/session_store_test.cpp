// The session store: the id limit, expiry from the last use, private
// records, the sweep of what killed processes leave, and sessions that
// follow their account.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "platform/libipmi.h"
#include "platform/libipmi_users.h"
#include "platform/sim/directory_providers.h"
#include "platform/sim/host_interface.h"
#include "platform/sim/user_table.h"
#include "security/session_store.h"
#include "sim_root_fixture.h"

using namespace odata::redfish;

namespace {

namespace fs = std::filesystem;

class SessionStore : public sim_testing::sim_root {
protected:
    void SetUp() override {
        sim_root::SetUp();
        ASSERT_NE(GlobalParaInit(), 0);
        setenv("REMOTE_ADDR", "127.0.0.9", 1);
        sim_testing::write_text(path("/nv/redfish/sessionservice.ini"),
                                "[SessionService]\nSessionTimeout=30\n");
        ASSERT_TRUE(
            platform::set_directory_provider_enabled(platform::directory_provider::ldap, true));
    }
    void TearDown() override {
        unsetenv("REMOTE_ADDR");
        unsetenv("SERVER_ADDR");
        GlobalParaFin();
        sim_root::TearDown();
    }

    void change_user(int slot, const char* name, int level, bool enabled = true) {
        sim_testing::add_user(slot, name, "Secret-Pass1", level, enabled);
    }

    void delete_user(int slot) {
        ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
        ASSERT_EQ(UtilDelUserName(slot), 0);
        ASSERT_EQ(PSCommit(), 0);
        ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    }

    opened_session open_for(int slot) {
        std::optional<session_owner> owner = local_owner(slot, SESSION_SOURCE_LOCAL);
        EXPECT_TRUE(owner);
        std::optional<opened_session> session = owner ? open_session(*owner) : std::nullopt;
        EXPECT_TRUE(session);
        return session.value_or(opened_session{0, "", ""});
    }

    opened_session open_for_directory_user(int level = PRIV_ADMINISTRATOR) {
        return open_session({"ldapuser", level, SESSION_SOURCE_LDAP, -1, 0}).value();
    }

    std::string record_file(const std::string& token) { return path("/tmp/redfish_" + token); }
    fs::path directory(int id) {
        return path("/tmp/www/redfish/v1/SessionService/Sessions/" + std::to_string(id));
    }

    // Moves the session's last use seconds into the past.
    void idle(const std::string& token, long seconds) {
        St_RedfishSession record{};
        std::fstream file(record_file(token), std::ios::in | std::ios::out | std::ios::binary);
        file.read(reinterpret_cast<char*>(&record), sizeof record);
        const std::string aged = std::to_string(std::atol(record.last_use) - seconds);
        std::strncpy(record.last_use, aged.c_str(), sizeof record.last_use - 1);
        file.seekp(0);
        file.write(reinterpret_cast<const char*>(&record), sizeof record);
    }

    void expect_gone(const opened_session& session) {
        EXPECT_FALSE(validate_token(session.token));
        EXPECT_FALSE(fs::exists(record_file(session.token)));
        EXPECT_FALSE(fs::exists(directory(session.id)));
    }
};

TEST_F(SessionStore, SixteenAtOnceAndALogoutFreesTheLowestId) {
    for (int id = 1; id <= max_sessions; ++id) EXPECT_EQ(open_for_directory_user().id, id);
    session_refusal refusal = session_refusal::share_used;
    EXPECT_FALSE(
        open_session({"ldapuser", PRIV_ADMINISTRATOR, SESSION_SOURCE_LDAP, -1, 0}, &refusal));
    EXPECT_EQ(refusal, session_refusal::table_full);
    EXPECT_TRUE(remove_session(5));
    EXPECT_FALSE(remove_session(5));
    EXPECT_EQ(open_for_directory_user().id, 5);
    EXPECT_EQ(session_ids().size(), static_cast<size_t>(max_sessions));
}

TEST_F(SessionStore, RecordsArePrivateAndServedDirectoriesLinkTheService) {
    const opened_session session = open_for_directory_user();
    struct stat status {};
    ASSERT_EQ(stat(record_file(session.token).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
    EXPECT_EQ(status.st_size, SESSION_RECORD_SIZE);
    ASSERT_EQ(stat(directory(session.id).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700u);
    ASSERT_EQ(stat(path("/tmp/redfish.lock").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
    EXPECT_TRUE(fs::is_symlink(directory(session.id) / "index.fcgi"));
    EXPECT_EQ(session.uri, "/redfish/v1/SessionService/Sessions/1");
}

TEST_F(SessionStore, ExpiryRunsFromTheLastUse) {
    const opened_session busy = open_for_directory_user();
    const opened_session idle_one = open_for_directory_user();
    for (int use = 0; use < 3; ++use) {
        idle(busy.token, 25);
        EXPECT_TRUE(validate_token(busy.token)) << use;
    }
    idle(idle_one.token, 31);
    expect_gone(idle_one);
    idle(busy.token, 31);
    remove_expired_sessions();
    expect_gone(busy);
    EXPECT_FALSE(validate_token("abcdefghijklmnopqrstuvwxyz123456"));
    EXPECT_FALSE(validate_token("../../etc/passwd"));
}

TEST_F(SessionStore, TheSweepRemovesWhatKilledProcessesLeft) {
    const opened_session kept = open_for_directory_user();
    const std::string sessions = path("/tmp/www/redfish/v1/SessionService/Sessions/");
    // A directory without a record holds an id; a record without its
    // directory was never handed out; temporaries and scratch directories.
    fs::create_directories(directory(3));
    const opened_session half = open_for_directory_user();
    fs::remove_all(directory(half.id));
    sim_testing::write_text(record_file("abcdefghijklmnopqrstuvwxyz123456") + ".tmp.4242.0", "x");
    fs::create_directories(sessions + ".scratch-9");
    sim_testing::write_text(path("/tmp/redfish_other.tmp"), "not ours");

    remove_expired_sessions();
    EXPECT_FALSE(fs::exists(directory(3)));
    EXPECT_FALSE(fs::exists(record_file(half.token)));
    EXPECT_FALSE(fs::exists(record_file("abcdefghijklmnopqrstuvwxyz123456") + ".tmp.4242.0"));
    EXPECT_FALSE(fs::exists(sessions + ".scratch-9"));
    EXPECT_TRUE(fs::exists(path("/tmp/redfish_other.tmp")));
    EXPECT_TRUE(validate_token(kept.token));
    for (int session = 2; session <= max_sessions; ++session) open_for_directory_user();
    EXPECT_EQ(session_ids().size(), static_cast<size_t>(max_sessions));
}

TEST_F(SessionStore, ASessionEndsWithItsAccount) {
    change_user(2, "bob1", PRIV_USER);
    change_user(3, "carol", PRIV_USER);
    change_user(4, "dave", PRIV_USER);
    const opened_session promoted = open_for(4);
    change_user(4, "dave", PRIV_ADMINISTRATOR);
    EXPECT_EQ(validate_token(promoted.token)->privilege, PRIV_ADMINISTRATOR);
    const opened_session renamed = open_for(2);
    const opened_session disabled = open_for(3);
    const opened_session replaced = open_for(4);
    const opened_session directory_user = open_for_directory_user();

    change_user(2, "bob2", PRIV_USER);
    change_user(3, "carol", PRIV_USER, false);
    delete_user(4);
    change_user(4, "dave", PRIV_ADMINISTRATOR);  // a new user under the old name
    expect_gone(renamed);
    expect_gone(disabled);
    EXPECT_TRUE(fs::exists(record_file(replaced.token)));
    remove_expired_sessions();
    EXPECT_FALSE(fs::exists(record_file(replaced.token)));
    EXPECT_TRUE(validate_token(directory_user.token));
}

TEST_F(SessionStore, RemovingAnAccountsSessionsKeepsTheNamedOne) {
    change_user(2, "bob1", PRIV_USER);
    const opened_session first = open_for(2);
    const opened_session second = open_for(2);
    const opened_session other = open_for_directory_user();
    remove_account_sessions(2, second.id);
    expect_gone(first);
    EXPECT_TRUE(validate_token(second.token));
    EXPECT_TRUE(validate_token(other.token));
}

TEST_F(SessionStore, AccountsThatCannotConfigureTheManagerLeaveRoomForAdministrators) {
    for (int id = 1; id <= max_sessions_without_configure_manager; ++id)
        EXPECT_EQ(open_for_directory_user(id % 2 ? PRIV_USER : PRIV_OPERATOR).id, id);
    for (int level : {PRIV_USER, PRIV_OPERATOR}) {
        session_refusal refusal = session_refusal::table_full;
        EXPECT_FALSE(open_session({"ldapuser", level, SESSION_SOURCE_LDAP, -1, 0}, &refusal));
        EXPECT_EQ(refusal, session_refusal::share_used);
    }
    for (int id = max_sessions_without_configure_manager + 1; id <= max_sessions; ++id)
        EXPECT_EQ(open_for_directory_user().id, id);
    EXPECT_TRUE(remove_session(1));
    EXPECT_EQ(open_for_directory_user(PRIV_USER).id, 1);
}

TEST_F(SessionStore, OutsideUsersSessionsEndWithWhatLetThemIn) {
    const opened_session directory_user = open_for_directory_user();
    ASSERT_TRUE(
        platform::set_directory_provider_enabled(platform::directory_provider::ldap, false));
    expect_gone(directory_user);

    ASSERT_TRUE(platform::set_host_interface(true));
    ASSERT_TRUE(platform::set_host_interface_addresses({"127.0.0.2"}));
    ASSERT_TRUE(platform::set_host_firmware_credential("hostfw", "HostFw#Pass1"));
    setenv("SERVER_ADDR", "127.0.0.2", 1);
    const session_owner firmware{"hostfw", PRIV_ADMINISTRATOR, SESSION_SOURCE_HOST_INTERFACE, -1,
                                 0};
    const opened_session cleared = open_session(firmware).value();
    EXPECT_TRUE(validate_token(cleared.token));
    setenv("SERVER_ADDR", "127.0.0.1", 1);  // the same token from the network
    EXPECT_FALSE(validate_token(cleared.token));
    EXPECT_TRUE(fs::exists(record_file(cleared.token)));
    setenv("SERVER_ADDR", "127.0.0.2", 1);
    EXPECT_TRUE(validate_token(cleared.token));
    ASSERT_TRUE(platform::set_host_firmware_credential("", ""));
    expect_gone(cleared);

    ASSERT_TRUE(platform::set_host_firmware_credential("hostfw", "HostFw#Pass1"));
    const opened_session switched_off = open_session(firmware).value();
    ASSERT_TRUE(platform::set_host_interface(false));
    remove_expired_sessions();
    expect_gone(switched_off);
    // A session of no local account that no provider stands for.
    const opened_session nobodys =
        open_session({"ghost", PRIV_ADMINISTRATOR, SESSION_SOURCE_LOCAL, -1, 0}).value();
    expect_gone(nobodys);
}

}  // namespace
