// bmcsim's areas users, directory, lockdown, hostif and snmp.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "platform/libdirectory.h"
#include "platform/libipmi_users.h"
#include "platform/sim/tool/areas.h"
#include "platform/sim/user_table.h"
#include "sim_root_fixture.h"
#include "tool_runner.h"

namespace {

using sim_testing::file_text;

class UsersTool : public sim_testing::sim_root, public tool_runner {};

TEST_F(UsersTool, SeedThenList) {
    ASSERT_EQ(run({"users", "seed", "admin", "admin-pass1"}), 0);
    EXPECT_EQ(out_.str(), "seeded slot 1: admin\n");
    ASSERT_EQ(run({"users", "seed", "admin", "admin-pass1"}), 0);
    EXPECT_EQ(out_.str(), "user table exists; not seeded\n");
    ASSERT_EQ(run({"users", "list"}), 0);
    EXPECT_EQ(out_.str(), "SLOT ID NAME LEVEL ROLE ENABLED\n1 2 admin 4 Administrator yes\n");
    EXPECT_EQ(out_.str().find("admin-pass1"), std::string::npos);
}

TEST_F(UsersTool, AddPasswdDisableEnableDelete) {
    ASSERT_EQ(run({"users", "add", "3", "bob", "Bob-Pass1", "Operator"}), 0);
    ASSERT_EQ(run({"users", "add", "4", "eve", "Eve-Pass1", "2"}), 0);
    EXPECT_EQ(UtilFindUser("bob"), 3);
    EXPECT_EQ(UtilGetLANPriv(3), PRIV_OPERATOR);
    EXPECT_EQ(UtilGetLANPriv(4), PRIV_USER);
    EXPECT_EQ(UtilCheckUserPassword(3, "Bob-Pass1"), 0);

    EXPECT_EQ(run({"users", "add", "3", "other", "Pass", "2"}), bmcsim::exit_failed);  // in use
    EXPECT_EQ(run({"users", "add", "5", "bob", "Pass", "2"}), bmcsim::exit_failed);    // duplicate
    EXPECT_EQ(UtilGetLANPriv(5), PRIV_NO_ACCESS);

    ASSERT_EQ(run({"users", "passwd", "3", "Bob-Pass2"}), 0);
    EXPECT_EQ(UtilCheckUserPassword(3, "Bob-Pass2"), 0);
    ASSERT_EQ(run({"users", "disable", "3"}), 0);
    EXPECT_EQ(UtilFindUser("bob"), -1);
    ASSERT_EQ(run({"users", "list"}), 0);
    EXPECT_NE(out_.str().find("\n3 4 bob 3 Operator no\n"), std::string::npos);
    ASSERT_EQ(run({"users", "enable", "3"}), 0);
    EXPECT_EQ(UtilFindUser("bob"), 3);
    ASSERT_EQ(run({"users", "delete", "3"}), 0);
    EXPECT_EQ(UtilGetLANPriv(3), PRIV_NO_ACCESS);
    EXPECT_EQ(UtilFindUser("bob"), -1);
    EXPECT_EQ(run({"users", "delete", "3"}), bmcsim::exit_failed);
    EXPECT_EQ(run({"users", "passwd", "3", "x"}), bmcsim::exit_failed);
    EXPECT_EQ(file_text(platform::user_table_file()).find("Bob-Pass"), std::string::npos);
}

TEST_F(UsersTool, DirectorySwitchesAndAccounts) {
    sim_testing::write_text(path("/nv/redfish/ad.ini"),
                            "[ActiveDirectory]\nServiceAddresses=ldap://ad\n");
    ASSERT_EQ(run({"directory", "ad", "enable"}), 0);
    EXPECT_EQ(UtilGetNewADEnable(), 1);
    EXPECT_NE(file_text(path("/nv/redfish/ad.ini")).find("ServiceAddresses=ldap://ad"),
              std::string::npos);
    ASSERT_EQ(run({"directory", "ad", "user", "dave", "Dave-Pass1", "Operator"}), 0);
    int privilege = 0;
    EXPECT_EQ(AuthADProcess2("dave", "Dave-Pass1", &privilege), 0);
    EXPECT_EQ(privilege, PRIV_OPERATOR);
    ASSERT_EQ(run({"directory", "ad", "show"}), 0);
    EXPECT_EQ(out_.str(), "enabled\ndave 3 Operator\n");
    ASSERT_EQ(run({"directory", "ad", "remove", "dave"}), 0);
    EXPECT_NE(AuthADProcess2("dave", "Dave-Pass1", &privilege), 0);
    EXPECT_EQ(run({"directory", "ad", "remove", "dave"}), bmcsim::exit_failed);

    ASSERT_EQ(run({"directory", "ldap", "enable"}), 0);
    EXPECT_EQ(UtilGetLdapEnable(), 1);
    ASSERT_EQ(run({"directory", "ldap", "disable"}), 0);
    EXPECT_EQ(UtilGetLdapEnable(), 0);
    ASSERT_EQ(run({"directory", "radius", "enable"}), 0);
    ASSERT_EQ(run({"directory", "radius", "user", "erin", "Erin-Pass1", "ReadOnly"}), 0);
    // A RADIUS client without a server asks no one.
    EXPECT_NE(AuthRadiusProcess("erin", "Erin-Pass1", &privilege), 0);
    EXPECT_EQ(run({"directory", "radius", "server", "bad server"}), bmcsim::exit_failed);
    ASSERT_EQ(run({"directory", "radius", "server", "192.0.2.10"}), 0);
    EXPECT_EQ(AuthRadiusProcess("erin", "Erin-Pass1", &privilege), 0);
    EXPECT_EQ(privilege, PRIV_USER);
}

TEST_F(UsersTool, SnmpShowTellsOnlyWhetherKeysAreSet) {
    ASSERT_EQ(run({"users", "seed", "admin", "admin-pass1"}), 0);
    ASSERT_EQ(UtilSNMPSaveCfg(1, 2, "AuthKey123", 0, nullptr), 0);
    ASSERT_EQ(setSNMPDaemonOP(1), 0);
    ASSERT_EQ(run({"snmp", "show"}), 0);
    EXPECT_EQ(out_.str(),
              "daemon restarts: 1\n"
              "SLOT NAME AUTH_PROTOCOL AUTH_KEY_SET ENCRYPTION_PROTOCOL ENCRYPTION_KEY_SET\n"
              "1 admin 2 yes 0 no\n");
}

TEST_F(UsersTool, AnUnwritableRootFailsWith1) {
    sim_testing::write_text(root_ + "/file", "x");
    platform::set_bmc_root_for_tests(root_ + "/file/root");
    EXPECT_EQ(run({"users", "seed", "admin", "admin-pass1"}), bmcsim::exit_failed);
    EXPECT_EQ(run({"users", "add", "2", "bob", "Bob-Pass1", "2"}), bmcsim::exit_failed);
    EXPECT_EQ(run({"lockdown", "on"}), bmcsim::exit_failed);
    EXPECT_EQ(run({"directory", "radius", "enable"}), bmcsim::exit_failed);
    EXPECT_EQ(run({"hostif", "on"}), bmcsim::exit_failed);
    platform::set_bmc_root_for_tests(root_);
}

}  // namespace
