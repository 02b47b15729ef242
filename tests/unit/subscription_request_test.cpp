// Reading subscriptions from request bodies onto alert-destination entries.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "tasks/subscription_request.h"

using namespace odata::redfish;

namespace {

std::vector<std::string> read(const char* body, bool creating, St_AlertDest& entry) {
    result_record result = general_error();
    read_subscription_request(boost::json::parse(body).as_object(), creating, entry, result);
    std::vector<std::string> ids;
    for (const auto& message : result.entries)
        ids.emplace_back(message.as_object().at("MessageId").as_string());
    return ids;
}

}  // namespace

TEST(SubscriptionRequest, ACreatedSubscriptionIsEnabledWithItsProtocolsType) {
    St_AlertDest entry{};
    EXPECT_TRUE(read(R"({"Destination":"https://192.0.2.1/e","Protocol":"Redfish",
                         "EventTypes":["Alert","StatusChange"],"Context":"c"})",
                     true, entry)
                    .empty());
    EXPECT_EQ(entry.enabled, 1);
    EXPECT_EQ(entry.type, ALERT_DEST_REDFISH);
    EXPECT_EQ(entry.event_types, ALERT_EVENT_ALERT | ALERT_EVENT_STATUS_CHANGE);
    EXPECT_STREQ(entry.context, "c");
}

TEST(SubscriptionRequest, SnmpV3UsersAndKeysAreChecked) {
    for (const char* user : {"a,b", "a`b", "a{b", "a%b"}) {
        St_AlertDest entry{};
        const std::string body = std::string(R"({"Destination":"192.0.2.1","Protocol":"SNMPv3",)") +
                                 R"("Oem":{"Tarnwright":{"UserName":")" + user + R"("}}})";
        EXPECT_EQ(read(body.c_str(), true, entry),
                  std::vector<std::string>{"TWR.1.0.OemSnmpv3IllegalUser"})
            << user;
    }
    for (const char* key : {"abcdefg1", "ABCDEFG1", "Abcdefgh", "Abc1"}) {
        St_AlertDest entry{};
        const std::string body = std::string(R"({"SNMP":{"AuthenticationKey":")") + key + "\"}}";
        EXPECT_EQ(read(body.c_str(), false, entry),
                  std::vector<std::string>{"TWR.1.0.OemSnmpv3IllegalKey"})
            << key;
        EXPECT_STREQ(entry.authentication_key, "");
    }
}

TEST(SubscriptionRequest, APatchKeepsWhatItDoesNotName) {
    St_AlertDest entry{};
    ASSERT_TRUE(read(R"({"Destination":"192.0.2.1:1162","Protocol":"SNMPv3",
                         "SNMP":{"AuthenticationProtocol":"HMAC_SHA96","AuthenticationKey":"Abcdefg1"},
                         "Oem":{"Tarnwright":{"UserName":"trap"}}})",
                     true, entry)
                    .empty());
    EXPECT_TRUE(read(R"({"Context":"later"})", false, entry).empty());
    EXPECT_STREQ(entry.authentication_key, "Abcdefg1");
    EXPECT_STREQ(entry.snmp_user, "trap");
    EXPECT_STREQ(entry.context, "later");
    // Encryption without its key is not a usable SNMPv3 setting.
    EXPECT_EQ(read(R"({"SNMP":{"EncryptionProtocol":"CFB128_AES128"}})", false, entry),
              std::vector<std::string>{"TWR.1.0.OemSnmpv3IllegalKey"});
}

TEST(SubscriptionRequest, EveryBadMemberIsReportedInOnePass) {
    St_AlertDest entry{};
    EXPECT_EQ(read(R"({"Destination":7,"Protocol":"Syslog","EventTypes":"Alert",
                       "Id":"3","Oem":{"Other":{}},"Context":"a\u0001b"})",
                   true, entry),
              (std::vector<std::string>{
                  "Base.1.10.PropertyValueTypeError", "Base.1.10.PropertyValueNotInList",
                  "Base.1.10.PropertyValueTypeError", "Base.1.10.PropertyNotWritable",
                  "Base.1.10.PropertyUnknown", "Base.1.10.PropertyValueFormatError"}));
    EXPECT_EQ(read(R"({"Destination":"mailto:ops","Protocol":"SMTP"})", true, entry),
              std::vector<std::string>{"Base.1.10.PropertyValueFormatError"});
    const std::string too_long = R"({"Context":")" + std::string(256, 'c') + R"("})";
    EXPECT_EQ(read(too_long.c_str(), false, entry),
              std::vector<std::string>{"Base.1.10.PropertyValueFormatError"});
}

TEST(SubscriptionRequest, TrapPortsOutsideOneTo65535AreRefused) {
    auto answer = [](const std::string& destination) {
        St_AlertDest entry{};
        const std::string body = R"({"Destination":")" + destination +
                                 R"(","Protocol":"SNMPv2c","SNMP":{"TrapCommunity":"public"}})";
        return read(body.c_str(), true, entry);
    };
    const std::vector<std::string> out_of_range{"Base.1.10.PropertyValueOutOfRange"};
    const std::vector<std::string> malformed{"Base.1.10.PropertyValueFormatError"};
    for (const char* destination : {"192.0.2.1:99999", "192.0.2.1:0", "192.0.2.1:65536",
                                    "udp:host:70000", "[2001:db8::1]:99999"})
        EXPECT_EQ(answer(destination), out_of_range) << destination;
    for (const char* destination :
         {"192.0.2.1:", "192.0.2.1:16x", "192.0.2.1:-1", "[2001:db8::1]:"})
        EXPECT_EQ(answer(destination), malformed) << destination;
    for (const char* destination : {"192.0.2.1", "192.0.2.1:1", "192.0.2.1:65535",
                                    "udp:192.0.2.1:162", "[2001:db8::1]:1162", "2001:db8::1"})
        EXPECT_TRUE(answer(destination).empty()) << destination;
}
