// The simulated directory providers, host interface, system lockdown,
// password complexity, login audit and SNMP user settings.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "platform/libdirectory.h"
#include "platform/libipmi_users.h"
#include "platform/sim/directory_providers.h"
#include "platform/sim/host_interface.h"
#include "platform/sim/radius_client.h"
#include "platform/sim/session_audit.h"
#include "platform/sim/sim_settings.h"
#include "platform/sim/snmp_users.h"
#include "platform/sim/user_table.h"
#include "sim_root_fixture.h"

namespace {

using platform::directory_provider;
using sim_testing::file_text;
using sim_testing::run_in_child;

using Directory = sim_testing::sim_root;

TEST_F(Directory, ProvidersAreOffByDefault) {
    EXPECT_EQ(UtilGetLdapEnable(), 0);
    EXPECT_EQ(UtilGetNewADEnable(), 0);
    EXPECT_EQ(UtilGetRadiusEnable(), 0);
    int privilege = -1;
    EXPECT_NE(AuthLdapProcess2("carol", "Carol-Pass1", &privilege), 0);
    EXPECT_NE(AuthADProcess2("carol", "Carol-Pass1", &privilege), 0);
    EXPECT_NE(AuthRadiusProcess("carol", "Carol-Pass1", &privilege), 0);
    EXPECT_EQ(privilege, -1);
}

TEST_F(Directory, AProviderAcceptsItsAccountsOnlyWhileEnabled) {
    ASSERT_TRUE(platform::set_directory_account(directory_provider::ldap, "carol", "Carol-Pass1",
                                                PRIV_OPERATOR));
    ASSERT_TRUE(platform::set_directory_account(directory_provider::ad, "dave", "Dave-Pass1",
                                                PRIV_ADMINISTRATOR));
    ASSERT_TRUE(platform::set_directory_account(directory_provider::radius, "erin", "Erin-Pass1",
                                                PRIV_USER));
    int privilege = -1;
    EXPECT_NE(AuthLdapProcess2("carol", "Carol-Pass1", &privilege), 0);

    ASSERT_TRUE(platform::set_directory_provider_enabled(directory_provider::ldap, true));
    EXPECT_EQ(UtilGetLdapEnable(), 1);
    EXPECT_EQ(AuthLdapProcess2("carol", "Carol-Pass1", &privilege), 0);
    EXPECT_EQ(privilege, PRIV_OPERATOR);
    EXPECT_NE(AuthLdapProcess2("carol", "Carol-Pass2", &privilege), 0);
    EXPECT_NE(AuthLdapProcess2("carol", "", &privilege), 0);
    EXPECT_NE(AuthLdapProcess2("carolx", "Carol-Pass1", &privilege), 0);
    EXPECT_NE(AuthLdapProcess2("caro", "Carol-Pass1", &privilege), 0);
    EXPECT_NE(AuthLdapProcess2(nullptr, "Carol-Pass1", &privilege), 0);
    EXPECT_NE(AuthLdapProcess2("dave", "Dave-Pass1", &privilege), 0);  // AD's, not LDAP's
    EXPECT_EQ(AuthLdapProcess2("carol", "Carol-Pass1", nullptr), 0);

    ASSERT_TRUE(platform::set_directory_provider_enabled(directory_provider::ad, true));
    EXPECT_EQ(AuthADProcess2("dave", "Dave-Pass1", &privilege), 0);
    EXPECT_EQ(privilege, PRIV_ADMINISTRATOR);
    EXPECT_NE(AuthADProcess2("carol", "Carol-Pass1", &privilege), 0);

    EXPECT_NE(AuthRadiusProcess("erin", "Erin-Pass1", &privilege), 0);
    ASSERT_TRUE(platform::set_directory_provider_enabled(directory_provider::radius, true));
    EXPECT_EQ(UtilGetRadiusEnable(), 0);  // no server to ask
    ASSERT_TRUE(platform::set_radius_server("radius.example.com"));
    EXPECT_EQ(UtilGetRadiusEnable(), 1);
    EXPECT_EQ(AuthRadiusProcess("erin", "Erin-Pass1", &privilege), 0);
    EXPECT_EQ(privilege, PRIV_USER);

    // Another process sees the same providers.
    EXPECT_EQ(run_in_child([] {
                  int level = 0;
                  return AuthADProcess2("dave", "Dave-Pass1", &level) == 0 &&
                                 level == PRIV_ADMINISTRATOR
                             ? 0
                             : 1;
              }),
              0);

    ASSERT_TRUE(platform::set_directory_provider_enabled(directory_provider::ldap, false));
    EXPECT_EQ(UtilGetLdapEnable(), 0);
    EXPECT_NE(AuthLdapProcess2("carol", "Carol-Pass1", &privilege), 0);
}

TEST_F(Directory, AccountsAreStoredHashedAndCanBeReplacedOrRemoved) {
    ASSERT_TRUE(platform::set_directory_account(directory_provider::ldap, "carol", "Carol-Pass1",
                                                PRIV_OPERATOR));
    ASSERT_TRUE(platform::set_directory_account(directory_provider::ldap, "carol", "Carol-Pass2",
                                                PRIV_USER));
    ASSERT_TRUE(platform::set_directory_provider_enabled(directory_provider::ldap, true));
    int privilege = 0;
    EXPECT_NE(AuthLdapProcess2("carol", "Carol-Pass1", &privilege), 0);
    EXPECT_EQ(AuthLdapProcess2("carol", "Carol-Pass2", &privilege), 0);
    EXPECT_EQ(privilege, PRIV_USER);
    auto accounts = platform::directory_accounts(directory_provider::ldap);
    ASSERT_EQ(accounts.size(), 1u);
    EXPECT_EQ(accounts[0].name, "carol");

    std::string text = file_text(platform::directory_users_file());
    EXPECT_EQ(text.find("Carol-Pass"), std::string::npos);
    struct stat status;
    ASSERT_EQ(stat(platform::directory_users_file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);

    EXPECT_TRUE(platform::remove_directory_account(directory_provider::ldap, "carol"));
    EXPECT_FALSE(platform::remove_directory_account(directory_provider::ldap, "carol"));
    EXPECT_NE(AuthLdapProcess2("carol", "Carol-Pass2", &privilege), 0);
    EXPECT_FALSE(platform::set_directory_account(directory_provider::ldap, "x", "Pass", 0));
    EXPECT_FALSE(
        platform::set_directory_account(directory_provider::ldap, "x", "Pass", PRIV_NO_ACCESS));
    EXPECT_FALSE(platform::set_directory_account(directory_provider::ldap, "x", "", PRIV_USER));
}

TEST_F(Directory, TheSwitchesAreTheServiceFilesAndOtherKeysStay) {
    sim_testing::write_text(
        path("/nv/redfish/ldap.ini"),
        "[LDAP]\nServiceEnabled=1\nServiceAddresses=ldap://10.0.0.5:389\nUsername=cn=bind\n");
    sim_testing::write_text(path("/nv/redfish/ad.ini"),
                            "[ActiveDirectory]\nServiceEnabled=1\nRemoteUser=u\n");
    EXPECT_EQ(UtilGetLdapEnable(), 1);
    EXPECT_EQ(UtilGetNewADEnable(), 1);
    ASSERT_TRUE(platform::set_directory_provider_enabled(directory_provider::ldap, false));
    ASSERT_TRUE(platform::set_directory_provider_enabled(directory_provider::ad, false));
    EXPECT_EQ(UtilGetLdapEnable(), 0);
    EXPECT_EQ(UtilGetNewADEnable(), 0);
    std::string ldap = file_text(path("/nv/redfish/ldap.ini"));
    EXPECT_NE(ldap.find("ServiceEnabled=0"), std::string::npos);
    EXPECT_NE(ldap.find("ServiceAddresses=ldap://10.0.0.5:389"), std::string::npos);
    EXPECT_NE(ldap.find("Username=cn=bind"), std::string::npos);
    EXPECT_NE(file_text(path("/nv/redfish/ad.ini")).find("RemoteUser=u"), std::string::npos);

    // The service's own spelling of the flag is read as a number.
    sim_testing::write_text(path("/nv/redfish/ldap.ini"), "[LDAP]\nServiceEnabled = 0\n");
    EXPECT_EQ(UtilGetLdapEnable(), 0);
    sim_testing::write_text(path("/nv/redfish/ad.ini"), "[ActiveDirectory]\nServiceEnabled=yes\n");
    EXPECT_EQ(UtilGetNewADEnable(), 0);
    // A file that cannot be parsed is left as it is.
    sim_testing::write_text(path("/nv/redfish/ldap.ini"), "[LDAP\n");
    EXPECT_FALSE(platform::set_directory_provider_enabled(directory_provider::ldap, true));
    EXPECT_EQ(file_text(path("/nv/redfish/ldap.ini")), "[LDAP\n");
}

// ---------------------------------------------------------------- host interface

TEST_F(Directory, TheHostInterfaceIsOffAndHasNoCredentialByDefault) {
    EXPECT_EQ(UtilIsHostInterface(), 0);
    EXPECT_EQ(UtilIsExistHostFWUserInfo("host", "Host-Pass1"), 0);
    ASSERT_TRUE(platform::set_host_interface(true));
    EXPECT_EQ(UtilGetHostInterfaceEnable(), 1);
    // A request counts as coming over it by the address it arrived on.
    setenv("SERVER_ADDR", "127.0.0.2", 1);
    EXPECT_EQ(UtilIsHostInterface(), 0);
    ASSERT_TRUE(platform::set_host_interface_addresses({"127.0.0.3", "127.0.0.2"}));
    EXPECT_EQ(UtilIsHostInterface(), 1);
    setenv("SERVER_ADDR", "127.0.0.1", 1);
    EXPECT_EQ(UtilIsHostInterface(), 0);
    unsetenv("SERVER_ADDR");
    EXPECT_EQ(UtilIsHostInterface(), 0);
    EXPECT_FALSE(platform::set_host_interface_addresses({"127.0.0.2 127.0.0.3"}));
    EXPECT_FALSE(platform::set_host_interface_addresses({"x; rm"}));
    ASSERT_TRUE(platform::set_host_firmware_credential("host", "Host-Pass1"));
    EXPECT_EQ(UtilIsExistHostFWUserInfo("host", "Host-Pass1"), 1);
    EXPECT_EQ(UtilIsExistHostFWUserInfo("host", nullptr), 1);
    EXPECT_EQ(UtilIsExistHostFWUserInfo("other", nullptr), 0);
    EXPECT_EQ(UtilIsExistHostFWUserInfo("host", "Host-Pass2"), 0);
    EXPECT_EQ(UtilIsExistHostFWUserInfo("hos", "Host-Pass1"), 0);
    EXPECT_EQ(UtilIsExistHostFWUserInfo(nullptr, nullptr), 0);
    EXPECT_EQ(file_text(platform::sim_settings_file()).find("Host-Pass1"), std::string::npos);
    ASSERT_TRUE(platform::set_host_firmware_credential("", ""));
    EXPECT_EQ(UtilIsExistHostFWUserInfo("host", "Host-Pass1"), 0);
    setenv("SERVER_ADDR", "127.0.0.2", 1);
    ASSERT_TRUE(platform::set_host_interface(false));
    EXPECT_EQ(UtilIsHostInterface(), 0);
    unsetenv("SERVER_ADDR");
}

// ---------------------------------------------------------------- lockdown

TEST_F(Directory, SystemLockdownIsOffUntilSetAndShared) {
    EXPECT_EQ(GetSetSysLockdownEnable(0, 0), 0);
    EXPECT_EQ(GetSetSysLockdownEnable(1, 1), 0);
    EXPECT_EQ(GetSetSysLockdownEnable(0, 0), 1);
    EXPECT_EQ(run_in_child([] { return GetSetSysLockdownEnable(0, 0) == 1 ? 0 : 1; }), 0);
    EXPECT_EQ(GetSetSysLockdownEnable(1, 0), 0);
    EXPECT_EQ(GetSetSysLockdownEnable(0, 1), 0);
}

// ---------------------------------------------------------------- complexity

TEST_F(Directory, PasswordComplexityIsOffByDefaultAndChecksFourClasses) {
    EXPECT_EQ(UtilGetPasswordComplexity(), 0);
    ASSERT_TRUE(platform::set_sim_setting("Users.PasswordComplexity", "1"));
    EXPECT_EQ(UtilGetPasswordComplexity(), 1);
    EXPECT_EQ(UtilPasswordCheck("Abcdef1!"), 0);
    EXPECT_EQ(UtilPasswordCheck("x9Y#"), 0);
    EXPECT_NE(UtilPasswordCheck("abcdef1!"), 0);  // no upper case
    EXPECT_NE(UtilPasswordCheck("ABCDEF1!"), 0);  // no lower case
    EXPECT_NE(UtilPasswordCheck("Abcdefg!"), 0);  // no digit
    EXPECT_NE(UtilPasswordCheck("Abcdefg1"), 0);  // no special character
    EXPECT_NE(UtilPasswordCheck("Abcdef1 "), 0);  // a blank is not one
    EXPECT_NE(UtilPasswordCheck(""), 0);
    EXPECT_NE(UtilPasswordCheck(nullptr), 0);
}

// ---------------------------------------------------------------- audit

TEST_F(Directory, TheLoginAuditIsOneLinePerEvent) {
    EXPECT_EQ(UtilSessionAduit("alice", "10.0.0.7", 1), 0);
    EXPECT_EQ(UtilSessionAduit("bad\nname", "10.0.0.8", 0), 0);
    EXPECT_EQ(platform::session_audit_file(), path("/var/log/session_audit.log"));
    std::string text = file_text(platform::session_audit_file());
    EXPECT_NE(text.find(" login user=alice address=10.0.0.7\n"), std::string::npos);
    EXPECT_NE(text.find(" logout user=bad?name address=10.0.0.8\n"), std::string::npos);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2);
}

TEST_F(Directory, TheLoginAuditTurnsOverWithinItsBoundAndStaysOwnerOnly) {
    const std::string name(200, 'u');
    const int lines = static_cast<int>(3 * platform::max_session_audit_bytes / name.size());
    for (int n = 0; n < lines; ++n)
        ASSERT_EQ(UtilSessionAduit(name.c_str(), std::to_string(n).c_str(), 1), 0);
    const std::string older = platform::session_audit_file() + ".1";
    for (const std::string& part : {platform::session_audit_file(), older}) {
        struct stat status {};
        ASSERT_EQ(stat(part.c_str(), &status), 0);
        EXPECT_LE(static_cast<std::size_t>(status.st_size), platform::max_session_audit_bytes);
        EXPECT_EQ(status.st_mode & 0777, 0600u);
    }
    // The newest line is kept whole, at the end of the current part.
    const std::string text = file_text(platform::session_audit_file());
    const std::string newest = " address=" + std::to_string(lines - 1) + "\n";
    ASSERT_GE(text.size(), newest.size());
    EXPECT_EQ(text.substr(text.size() - newest.size()), newest);
    EXPECT_EQ(text.find(" login user="), text.find(' '));
}

// ---------------------------------------------------------------- SNMP

TEST_F(Directory, SnmpKeysAreNeverStoredOrGivenBackInPlainText) {
    ASSERT_EQ(platform::seed_first_administrator("admin", "admin-pass1"),
              platform::seed_result::seeded);
    int values[4] = {-1, -1, -1, -1};
    EXPECT_EQ(UtilSNMPGetCfg(1, &values[0], &values[1], &values[2], &values[3]), 0);
    EXPECT_EQ(values[0] | values[1] | values[2] | values[3], 0);

    EXPECT_EQ(UtilSNMPSaveCfg(1, 2, "AuthKey123", 1, "PrivKey123"), 0);
    EXPECT_EQ(UtilSNMPGetCfg(1, &values[0], &values[1], &values[2], &values[3]), 0);
    EXPECT_EQ(values[0], 2);
    EXPECT_EQ(values[1], 1);
    EXPECT_EQ(values[2], 1);
    EXPECT_EQ(values[3], 1);
    std::string text = file_text(platform::snmp_users_file());
    EXPECT_EQ(text.find("AuthKey123"), std::string::npos);
    EXPECT_EQ(text.find("PrivKey123"), std::string::npos);
    struct stat status;
    ASSERT_EQ(stat(platform::snmp_users_file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);

    // A null key keeps the stored one, an empty key removes it.
    EXPECT_EQ(UtilSNMPSaveCfg(1, 1, nullptr, 0, ""), 0);
    EXPECT_EQ(UtilSNMPGetCfg(1, &values[0], &values[1], &values[2], &values[3]), 0);
    EXPECT_EQ(values[0], 1);
    EXPECT_EQ(values[1], 1);
    EXPECT_EQ(values[2], 0);
    EXPECT_EQ(values[3], 0);

    // Empty slots have no settings.
    EXPECT_NE(UtilSNMPSaveCfg(5, 1, "AuthKey123", 0, nullptr), 0);
    EXPECT_NE(UtilSNMPGetCfg(5, &values[0], &values[1], &values[2], &values[3]), 0);

    // A later user of the slot does not inherit them.
    ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
    ASSERT_EQ(UtilDelUserName(1), 0);
    ASSERT_EQ(UtilSetUserName(1, "root"), 0);
    ASSERT_EQ(PSCommit(), 0);
    ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    EXPECT_EQ(UtilSNMPGetCfg(1, &values[0], &values[1], &values[2], &values[3]), 0);
    EXPECT_EQ(values[0] | values[1] | values[2] | values[3], 0);
}

TEST_F(Directory, TheSnmpDaemonOperationsAreCounted) {
    EXPECT_EQ(platform::snmp_daemon_restarts(), 0);
    EXPECT_EQ(setSNMPDaemonOP(1), 0);
    EXPECT_EQ(run_in_child([] { return setSNMPDaemonOP(2); }), 0);
    EXPECT_EQ(platform::snmp_daemon_restarts(), 2);
    EXPECT_EQ(platform::sim_setting_number("SNMP.LastOperation", -1), 2);
}

}  // namespace
