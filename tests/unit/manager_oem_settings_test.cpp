// The manager's own settings: the IP access control's decision and rule
// requests, the simulated stores of NTP, syslog, IP filter and KCS
// privilege, remote syslog delivery and the all-or-nothing configuration
// reset.
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cstring>
#include <filesystem>

#include "message_ids.h"
#include "platform/libbmc.h"
#include "platform/libipfilter.h"
#include "platform/libipmi.h"
#include "platform/libkcs.h"
#include "platform/libntp.h"
#include "platform/libsyslog.h"
#include "platform/outbound_destinations.h"
#include "platform/sim/ip_filter.h"
#include "platform/sim/kcs_privilege.h"
#include "platform/sim/ntp_settings.h"
#include "platform/sim/remote_syslog.h"
#include "resources/managers/filter_rule_request.h"
#include "security/address_filter.h"
#include "sim_root_fixture.h"
#include "tool_runner.h"

using namespace odata::redfish;

namespace {

uint32_t ipv4(const char* text) {
    uint32_t address = 0;
    EXPECT_TRUE(platform::parse_ipv4(text, address)) << text;
    return address;
}

St_IpFilterRule rule(const char* first, const char* last, int action) {
    return {1, ipv4(first), ipv4(last), static_cast<uint8_t>(action)};
}

std::optional<St_IpFilterRule> read_rule(const char* body, const St_IpFilterRule* stored,
                                         result_record& result) {
    return read_filter_rule(boost::json::parse(body).as_object(), stored, result);
}

}  // namespace

TEST(AddressFilter, FirstMatchingRuleDecidesAndAnAllowRuleMakesAnAllowList) {
    St_IpFilterConfig config{};
    config.rules[3] = rule("10.0.0.0", "10.0.0.255", IP_FILTER_DENY);
    EXPECT_TRUE(address_passes(config, "10.0.0.7"));  // off: everyone passes
    config.enabled = 1;
    EXPECT_FALSE(address_passes(config, "10.0.0.7"));
    EXPECT_FALSE(address_passes(config, "::ffff:10.0.0.255"));
    EXPECT_TRUE(address_passes(config, "10.0.1.0"));
    EXPECT_TRUE(address_passes(config, "fe80::1"));
    config.rules[0] = rule("10.0.0.7", "10.0.0.7", IP_FILTER_ALLOW);
    EXPECT_TRUE(address_passes(config, "10.0.0.7"));
    EXPECT_FALSE(address_passes(config, "10.0.0.8"));
    EXPECT_FALSE(address_passes(config, "10.0.1.0"));
    EXPECT_FALSE(address_passes(config, "fe80::1"));
    EXPECT_FALSE(address_passes(config, ""));
    EXPECT_FALSE(address_passes(config, "127.0.0.2"));
    // The BMC's own loopback is never shut out; unused slots never match.
    config.rules[1] = rule("0.0.0.0", "255.255.255.255", IP_FILTER_DENY);
    config.rules[1].used = 0;
    config.rules[2] = rule("127.0.0.0", "127.255.255.255", IP_FILTER_DENY);
    EXPECT_TRUE(address_passes(config, "127.0.0.1"));
    EXPECT_TRUE(address_passes(config, "::1"));
    EXPECT_TRUE(address_passes(config, "::ffff:127.0.0.1"));
    EXPECT_FALSE(address_passes(config, "127.0.0.2"));
}

TEST(FilterRuleRequest, NewRulesNeedStartAndActionAndChangesKeepTheRest) {
    result_record result = general_error();
    std::optional<St_IpFilterRule> made =
        read_rule(R"({"StartAddress":"10.1.2.3","Action":"Deny"})", nullptr, result);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->first, made->last);
    EXPECT_EQ(made->action, IP_FILTER_DENY);
    EXPECT_EQ(ipv4_text(made->first), "10.1.2.3");

    const St_IpFilterRule stored = rule("10.0.0.1", "10.0.0.9", IP_FILTER_ALLOW);
    made = read_rule(R"({"StartAddress":"10.0.0.5"})", &stored, result);
    ASSERT_TRUE(made);
    EXPECT_EQ(ipv4_text(made->last), "10.0.0.9");
    EXPECT_EQ(made->action, IP_FILTER_ALLOW);
    EXPECT_TRUE(result.entries.empty());

    EXPECT_FALSE(read_rule(R"({"StartAddress":"10.0.0.10"})", &stored, result));
    EXPECT_EQ(message_ids(result), std::vector<std::string>{"Base.1.10.PropertyValueConflict"});

    result = general_error();
    EXPECT_FALSE(
        read_rule(R"({"EndAddress":"010.0.0.1","Action":"Block","Id":"3"})", nullptr, result));
    EXPECT_EQ(message_ids(result),
              (std::vector<std::string>{"Base.1.10.PropertyValueFormatError",
                                        "Base.1.10.PropertyValueNotInList",
                                        "Base.1.10.PropertyUnknown", "Base.1.10.PropertyMissing"}));
}

class ManagerSettingsStore : public sim_testing::sim_root, public tool_runner {};

TEST_F(ManagerSettingsStore, EachSettingKeepsWhatIsValidAndRefusesTheRest) {
    St_NtpConfig ntp{};
    ASSERT_EQ(PltNTP_GetConfig(&ntp), PLT_OK);
    EXPECT_EQ(ntp.source, NTP_SOURCE_MANUAL);
    ntp.source = NTP_SOURCE_NTP;
    std::strcpy(ntp.servers[1], "time.example.com");
    EXPECT_EQ(PltNTP_SetConfig(&ntp), PLT_OK);
    std::strcpy(ntp.servers[2], "bad\nserver");
    EXPECT_EQ(PltNTP_SetConfig(&ntp), PLT_ERR_ARGUMENT);
    std::memset(ntp.servers[2], 'x', NTP_SERVER_SIZE);  // no NUL
    EXPECT_EQ(PltNTP_SetConfig(&ntp), PLT_ERR_ARGUMENT);
    ASSERT_EQ(PltNTP_GetConfig(&ntp), PLT_OK);
    EXPECT_STREQ(ntp.servers[1], "time.example.com");
    EXPECT_STREQ(ntp.servers[2], "");

    St_SyslogConfig syslog{1, "", 514};
    EXPECT_EQ(PltSYSLOG_SetConfig(&syslog), PLT_ERR_ARGUMENT);  // on without a destination
    std::strcpy(syslog.address, "example.com");
    EXPECT_EQ(PltSYSLOG_SetConfig(&syslog), PLT_ERR_ARGUMENT);
    std::strcpy(syslog.address, "192.0.2.1");
    syslog.port = 0;
    EXPECT_EQ(PltSYSLOG_SetConfig(&syslog), PLT_ERR_ARGUMENT);
    syslog.port = 6514;
    EXPECT_EQ(PltSYSLOG_SetConfig(&syslog), PLT_OK);

    EXPECT_EQ(UtilGetKCSPrivilege(KCS_CHANNEL), KCS_PRIV_ADMINISTRATOR);
    EXPECT_EQ(UtilSetKCSPrivilege(KCS_CHANNEL, 0), PLT_ERR_ARGUMENT);
    EXPECT_EQ(UtilSetKCSPrivilege(KCS_CHANNEL + 1, KCS_PRIV_USER), PLT_ERR_NOT_FOUND);
    EXPECT_EQ(UtilSetKCSPrivilege(KCS_CHANNEL, KCS_PRIV_USER), PLT_OK);
    EXPECT_EQ(sim_testing::run_in_child([] { return UtilGetKCSPrivilege(KCS_CHANNEL); }),
              KCS_PRIV_USER);
    sim_testing::write_text(platform::kcs_settings_file(), "[KCS]\nPrivilege=15\n");
    EXPECT_EQ(UtilGetKCSPrivilege(KCS_CHANNEL), PLT_ERR_FORMAT);

    const St_IpFilterRule backwards = rule("10.0.0.9", "10.0.0.1", IP_FILTER_DENY);
    EXPECT_EQ(PltIPFILTER_AddRule(&backwards), PLT_ERR_ARGUMENT);
    const St_IpFilterRule single = rule("10.0.0.1", "10.0.0.1", IP_FILTER_DENY);
    for (int index = 0; index < IP_FILTER_RULE_COUNT; ++index)
        EXPECT_EQ(PltIPFILTER_AddRule(&single), index);
    EXPECT_EQ(PltIPFILTER_AddRule(&single), PLT_ERR_STATE);
    EXPECT_EQ(PltIPFILTER_SetRule(IP_FILTER_RULE_COUNT, &single), PLT_ERR_NOT_FOUND);
    const St_IpFilterRule unused{};
    EXPECT_EQ(PltIPFILTER_SetRule(4, &unused), PLT_OK);
    EXPECT_EQ(PltIPFILTER_AddRule(&single), 4);
}

TEST_F(ManagerSettingsStore, AHandEditedRuleThatIsMalformedIsUnused) {
    sim_testing::write_text(platform::ip_filter_file(),
                            "[Filter]\nEnabled=1\n[Rule1]\nFirst=10.0.0.1\nLast=10.0.0.300\n"
                            "Action=Deny\n[Rule2]\nFirst=10.0.0.9\nLast=10.0.0.1\nAction=Deny\n"
                            "[Rule3]\nFirst=10.0.0.1\nLast=10.0.0.1\nAction=Drop\n"
                            "[Rule4]\nFirst=10.0.0.1\nLast=10.0.0.1\nAction=Deny\n");
    St_IpFilterConfig config;
    ASSERT_EQ(PltIPFILTER_GetConfig(&config), PLT_OK);
    EXPECT_EQ(config.enabled, 1);
    EXPECT_FALSE(config.rules[0].used || config.rules[1].used || config.rules[2].used);
    EXPECT_TRUE(config.rules[3].used);
}

TEST_F(ManagerSettingsStore, TheConfigurationResetIsAllOrNothing) {
    ASSERT_EQ(UtilSetKCSPrivilege(KCS_CHANNEL, KCS_PRIV_OPERATOR), PLT_OK);
    ASSERT_EQ(PltIPFILTER_SetEnabled(1), PLT_OK);
    const std::string ntp_file = platform::ntp_settings_file();
    // A settings file that cannot be replaced: nothing may change.
    std::filesystem::create_directories(ntp_file);
    EXPECT_EQ(PltBMC_ResetConfig(), PLT_ERR_IO);
    EXPECT_EQ(UtilGetKCSPrivilege(KCS_CHANNEL), KCS_PRIV_OPERATOR);
    St_IpFilterConfig config;
    ASSERT_EQ(PltIPFILTER_GetConfig(&config), PLT_OK);
    EXPECT_EQ(config.enabled, 1);
    std::filesystem::remove(ntp_file);
    EXPECT_EQ(PltBMC_ResetConfig(), PLT_OK);
    EXPECT_EQ(UtilGetKCSPrivilege(KCS_CHANNEL), KCS_PRIV_ADMINISTRATOR);
    ASSERT_EQ(PltIPFILTER_GetConfig(&config), PLT_OK);
    EXPECT_EQ(config.enabled, 0);
}

TEST_F(ManagerSettingsStore, LoggedEventsReachTheSyslogReceiverOnlyWhereTheBmcMaySend) {
    const int receiver = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ASSERT_GE(receiver, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    ASSERT_EQ(bind(receiver, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(getsockname(receiver, reinterpret_cast<sockaddr*>(&address), &length), 0);
    St_SyslogConfig syslog{1, "127.0.0.1", ntohs(address.sin_port)};
    ASSERT_EQ(PltSYSLOG_SetConfig(&syslog), PLT_OK);
    char line[512] = "";
    // Loopback is refused until the BMC is set to allow it.
    ASSERT_EQ(LibSaveSysEvtLog(12, 0, "refused"), 0);
    EXPECT_LT(recv(receiver, line, sizeof line, MSG_DONTWAIT), 0);
    sim_testing::write_text(platform::outbound_settings_file(), "[Destinations]\nAllowLocal=1\n");
    ASSERT_EQ(LibSaveSysEvtLog(12, 0, "first\r\nsecond"), 0);
    const ssize_t size = recv(receiver, line, sizeof line - 1, MSG_DONTWAIT);
    ASSERT_GT(size, 0);
    EXPECT_TRUE(std::string(line, size).rfind(" bmc bmc-events - 12 - first  second") !=
                std::string::npos)
        << line;
    syslog.enabled = 0;
    ASSERT_EQ(PltSYSLOG_SetConfig(&syslog), PLT_OK);
    ASSERT_EQ(LibSaveSysEvtLog(12, 0, "off"), 0);
    EXPECT_LT(recv(receiver, line, sizeof line, MSG_DONTWAIT), 0);
    close(receiver);
}

TEST_F(ManagerSettingsStore, BmcsimRefusesWhatTheStoresWouldRefuse) {
    EXPECT_EQ(run({"ntp", "servers", "a", "b", "c", "d"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"ntp", "servers", "bad host"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"ntp", "source", "gps"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"syslog", "destination", "example.com", "514"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"syslog", "on"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"syslog", "destination", "192.0.2.1", "0"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"ipfilter", "add", "drop", "10.0.0.1"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"ipfilter", "add", "deny", "10.0.0.9", "10.0.0.1"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"ipfilter", "delete", "17"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"kcs", "set", "NoAccess"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"kcs", "set", "Operator"}), bmcsim::exit_ok);
    EXPECT_EQ(run({"kcs", "show"}), bmcsim::exit_ok);
    EXPECT_EQ(out_.str(), "privilege=Operator\n");
    EXPECT_EQ(run({"ipfilter", "add", "allow", "10.0.0.1", "10.0.0.3"}), bmcsim::exit_ok);
    EXPECT_EQ(run({"ipfilter", "show"}), bmcsim::exit_ok);
    EXPECT_EQ(out_.str(), "enabled=off\n1 allow 10.0.0.1-10.0.0.3\n");
}
