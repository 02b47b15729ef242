#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "frontend/exception_http.h"
#include "platform/libipmi.h"
#include "platform/libipmi_users.h"
#include "platform/sim/bad_password_records.h"
#include "platform/sim/directory_providers.h"
#include "platform/sim/event_log.h"
#include "platform/sim/host_interface.h"
#include "platform/sim/session_audit.h"
#include "platform/sim/user_table.h"
#include "security/account_lockout.h"
#include "security/auth.h"
#include "sim_root_fixture.h"
#include "stdout_capture.h"

using namespace odata::redfish;

namespace {

std::string base64(const std::string& text) {
    static const char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string encoded;
    for (size_t at = 0; at < text.size(); at += 3) {
        unsigned chunk = static_cast<unsigned char>(text[at]) << 16;
        if (at + 1 < text.size()) chunk |= static_cast<unsigned char>(text[at + 1]) << 8;
        if (at + 2 < text.size()) chunk |= static_cast<unsigned char>(text[at + 2]);
        for (size_t digit = 0; digit < 4; ++digit)
            encoded += at + digit <= text.size() ? digits[(chunk >> (18 - 6 * digit)) & 63] : '=';
    }
    return encoded;
}

class Authentication : public sim_testing::sim_root {
protected:
    void SetUp() override {
        sim_root::SetUp();
        ASSERT_NE(GlobalParaInit(), 0);
        platform::seed_first_administrator("admin", "Adm1n-pass");
        setenv("REQUEST_METHOD", "GET", 1);
        setenv("REMOTE_ADDR", "127.0.0.9", 1);
    }
    void TearDown() override {
        unsetenv("HTTP_AUTHORIZATION");
        unsetenv("REQUEST_METHOD");
        unsetenv("REMOTE_ADDR");
        unsetenv("SERVER_ADDR");
        GlobalParaFin();
        sim_root::TearDown();
    }

    bool basic_login(const std::string& name, const std::string& password) {
        std::string header = "Basic " + base64(name + ":" + password);
        setenv("HTTP_AUTHORIZATION", header.c_str(), 1);
        auto authenticator = make_authenticator(context, basic_mode);
        return authenticate(context, *authenticator);
    }

    // The answer to a Basic request: 200, 401 or 403 (locked out).
    int basic_status(const std::string& name, const std::string& password) {
        try {
            return basic_login(name, password) ? 200 : 401;
        } catch (const exception_http& refused) {
            return refused.headers().rfind("Status: 403 Forbidden\r\n", 0) == 0 ? 403 : 500;
        }
    }

    void policy(const std::string& keys) {
        sim_testing::write_text(path("/nv/redfish/accountservice.ini"),
                                "[AccountService]\n" + keys);
    }

    request_context context;
};

}  // namespace

TEST_F(Authentication, BasicCredentialsOfALocalUser) {
    EXPECT_TRUE(basic_login("admin", "Adm1n-pass"));
    EXPECT_EQ(context.user_name, "admin");
    EXPECT_EQ(context.privilege, PRIV_ADMINISTRATOR);
    EXPECT_STREQ(InterfaceInfo->user_name, "admin");
    EXPECT_STREQ(InterfaceInfo->client_ip, "127.0.0.9");
    EXPECT_EQ(InterfaceInfo->privilege, PRIV_ADMINISTRATOR);
    EXPECT_FALSE(basic_login("admin", "wrong-pass"));
    EXPECT_FALSE(basic_login("admin", ""));
}

TEST_F(Authentication, NamesCompareOnTheirFirstSixteenCharacters) {
    LibSetUserIndex(3);
    ASSERT_EQ(UtilSetUserName(3, "abcdefghijklmnop"), 0);
    ASSERT_EQ(UtilSetUserPassword(3, "Sixteen-1"), 0);
    ASSERT_EQ(UtilSetLANPriv(3, PRIV_OPERATOR), 0);
    ASSERT_EQ(UtilSetUserEnable(3, 1), 0);
    ASSERT_EQ(PSCommit(), 0);
    EXPECT_TRUE(basic_login("abcdefghijklmnopXYZ", "Sixteen-1"));
    EXPECT_EQ(context.privilege, PRIV_OPERATOR);
    // Whatever alias was typed, the caller is the account as stored.
    EXPECT_EQ(context.user_name, "abcdefghijklmnop");
    EXPECT_STREQ(InterfaceInfo->user_name, "abcdefghijklmnop");
    const std::string audit = sim_testing::file_text(platform::session_audit_file());
    EXPECT_NE(audit.find("user=abcdefghijklmnop "), std::string::npos);
    EXPECT_EQ(audit.find("XYZ"), std::string::npos);
}

TEST_F(Authentication, LongNamesReachTheChannelRecordOnlyBelow256Characters) {
    basic_auth authenticator(context);
    authenticator.user_name = std::string(255, 'n');
    authenticator.password = "whatever1";
    EXPECT_FALSE(authenticate(context, authenticator));
    EXPECT_EQ(std::string(InterfaceInfo->user_name), std::string(255, 'n'));

    std::strcpy(InterfaceInfo->user_name, "before");
    authenticator.user_name = std::string(256, 'n');
    EXPECT_FALSE(authenticate(context, authenticator));
    EXPECT_STREQ(InterfaceInfo->user_name, "before");
}

TEST_F(Authentication, LockedAccountIsRefusedWithItsPassword) {
    sim_testing::write_text(
        path("/nv/redfish/accountservice.ini"),
        "[AccountService]\nAccountLockoutThreshold=1\nAccountLockoutDuration=60\n"
        "AccountLockoutCounterResetAfter=60\n");
    EXPECT_FALSE(basic_login("admin", "wrong-pass"));
    try {
        basic_login("admin", "Adm1n-pass");
        FAIL() << "no refusal";
    } catch (const exception_http& refused) {
        EXPECT_EQ(refused.headers().rfind("Status: 403 Forbidden\r\n", 0), 0u);
        EXPECT_NE(refused.body().find("TWR.1.0.AccountLockup"), std::string::npos);
    }
}

TEST_F(Authentication, NamesThatAreNoUserLockLikeUsers) {
    sim_testing::add_user(3, "bob", "Bob-pass1", PRIV_OPERATOR, true);
    for (int attempt = 0; attempt < 5; ++attempt) {
        EXPECT_EQ(basic_status("bob", "wrong-pass"), 401);
        EXPECT_EQ(basic_status("nobody", "wrong-pass"), 401);
    }
    EXPECT_EQ(basic_status("bob", "Bob-pass1"), 403);
    EXPECT_EQ(basic_status("nobody", "wrong-pass"), 403);
    EXPECT_EQ(basic_status("nobodyatallxxxxxYZ", "wrong-pass"), 401);  // another name
    ASSERT_EQ(UnlockUser(3), 0);
    EXPECT_EQ(basic_status("bob", "Bob-pass1"), 200);
}

TEST_F(Authentication, NobodyOnTheNetworkLocksTheReservedAdministratorForEveryone) {
    for (int attempt = 0; attempt < 8; ++attempt) basic_status("admin", "wrong-pass");
    EXPECT_EQ(basic_status("admin", "Adm1n-pass"), 403);
    setenv("REMOTE_ADDR", "127.0.0.10", 1);
    EXPECT_EQ(basic_status("admin", "Adm1n-pass"), 200);
}

TEST_F(Authentication, TheLockoutPolicyIsTheServices) {
    sim_testing::add_user(3, "bob", "Bob-pass1", PRIV_OPERATOR, true);
    const std::string subject = lockout_subject(3, "bob", "127.0.0.9");
    const long long now = lx_time_get();
    // Failures older than CounterResetAfter no longer count.
    for (int old = 0; old < 4; ++old) AddBadPwdRecords(subject.c_str(), now - 61, 0);
    EXPECT_EQ(basic_status("bob", "wrong-pass"), 401);
    EXPECT_EQ(basic_status("bob", "Bob-pass1"), 200);
    // A lock ends after the duration; a longer duration set later holds it.
    ASSERT_EQ(LockBadPwdSubject(subject.c_str(), now - 61), 0);
    EXPECT_EQ(basic_status("bob", "Bob-pass1"), 200);
    ASSERT_EQ(LockBadPwdSubject(subject.c_str(), now - 61), 0);
    policy("AccountLockoutDuration=120\n");
    EXPECT_EQ(basic_status("bob", "Bob-pass1"), 403);
    policy("AccountLockoutDuration=0\n");  // until unlocked
    EXPECT_EQ(basic_status("bob", "Bob-pass1"), 403);
    policy("AccountLockoutThreshold=0\nAccountLockoutEnabled=0\n");
    for (int attempt = 0; attempt < 8; ++attempt) basic_status("bob", "wrong-pass");
    EXPECT_EQ(basic_status("bob", "Bob-pass1"), 200);
}

TEST_F(Authentication, TheHostFirmwareCredentialOnlyOverTheHostInterface) {
    ASSERT_TRUE(platform::set_host_interface(true));
    ASSERT_TRUE(platform::set_host_interface_addresses({"127.0.0.2"}));
    ASSERT_TRUE(platform::set_host_firmware_credential("hostfw", "HostFw#Pass1"));
    setenv("SERVER_ADDR", "127.0.0.1", 1);
    EXPECT_EQ(basic_status("hostfw", "HostFw#Pass1"), 401);
    setenv("SERVER_ADDR", "127.0.0.2", 1);
    EXPECT_EQ(basic_status("hostfw", "HostFw#Pass1"), 200);
    EXPECT_EQ(context.privilege, PRIV_ADMINISTRATOR);
    // Its name is no local user: its bad passwords count all the same.
    for (int attempt = 0; attempt < 5; ++attempt) basic_status("hostfw", "wrong-pass");
    EXPECT_EQ(basic_status("hostfw", "HostFw#Pass1"), 403);
}

TEST_F(Authentication, AccountsWithoutARoleAreRefused) {
    sim_testing::add_user(3, "callback", "Call-back1", PRIV_CALLBACK, true);
    sim_testing::add_user(4, "noaccess", "No-access1", PRIV_NO_ACCESS, true);
    EXPECT_EQ(basic_status("callback", "Call-back1"), 401);
    EXPECT_EQ(basic_status("noaccess", "No-access1"), 401);
}

TEST_F(Authentication, LoginsFailClosedWhenTheyCannotBeRecorded) {
    // Bad passwords that cannot be recorded are refused and said so.
    std::filesystem::create_directories(path("/var/bmc/lockout.lock"));
    EXPECT_EQ(basic_status("nobody", "wrong-pass"), 401);
    std::filesystem::remove(path("/var/bmc/lockout.lock"));
    // Neither is a good one that the audit cannot record.
    std::filesystem::remove(platform::session_audit_file());
    std::filesystem::create_directories(platform::session_audit_file());
    EXPECT_EQ(basic_status("admin", "Adm1n-pass"), 401);
    // Records that cannot be read lock everyone out.
    std::filesystem::remove(platform::session_audit_file());
    std::filesystem::create_directories(platform::lockout_file());
    EXPECT_EQ(basic_status("admin", "Adm1n-pass"), 403);
}

TEST_F(Authentication, FailedLoginIsLoggedAndAnswered401WithoutBody) {
    setenv("REQUEST_METHOD", "POST", 1);
    setenv("CONTENT_LENGTH", "41", 1);
    std::istringstream body(R"({"UserName":"nobody","Password":"nope"})");
    read_request_input(body);
    auto login = make_authenticator(context, login_mode);
    ASSERT_TRUE(login);
    EXPECT_EQ(context.session_limit, 16);
    stdout_capture capture;
    EXPECT_THROW(authenticate(context, *login), exception);
    release_request_input();
    unsetenv("CONTENT_LENGTH");
    EXPECT_EQ(capture.text(), "Status: 401 Unauthorized\r\n");
    auto events = platform::read_event_log();
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].code, 137);
    EXPECT_EQ(events[0].text, "/redfish/v1/SessionService/Sessions/");
}

TEST(Authenticator, ModesAndTheMissingMethod) {
    request_context context;
    unsetenv("REQUEST_METHOD");
    stdout_capture capture;
    EXPECT_EQ(make_authenticator(context, basic_mode), nullptr);
    EXPECT_EQ(capture.text(), "no method");
    setenv("REQUEST_METHOD", "GET", 1);
    EXPECT_EQ(make_authenticator(context, 7), nullptr);
    EXPECT_NE(std::dynamic_pointer_cast<basic_auth>(make_authenticator(context, basic_mode)),
              nullptr);
    unsetenv("REQUEST_METHOD");
}
