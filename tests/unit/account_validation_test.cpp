// Validation of account, account policy and directory settings requests,
// and the settings files they are stored in.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "framework/property_checks.h"
#include "platform/libdirectory.h"
#include "platform/libipmi_users.h"
#include "platform/sim/directory_providers.h"
#include "platform/sim/radius_client.h"
#include "platform/sim/sim_settings.h"
#include "security/account_policy.h"
#include "security/account_request.h"
#include "security/account_validation.h"
#include "security/directory_settings.h"
#include "security/directory_validation.h"
#include "security/external_account_provider.h"
#include "sim_root_fixture.h"

namespace {

using namespace odata::redfish;
using boost::json::parse;
using boost::json::value;

const std::string action = "/redfish/v1/AccountService/Accounts";

std::vector<std::string> ids(const result_record& result) {
    std::vector<std::string> found;
    for (const value& entry : result.entries) found.emplace_back(entry.at("MessageId").as_string());
    return found;
}

std::vector<std::string> ids_of(const std::string& only) { return {only}; }

boost::json::array args_of(const result_record& result, std::size_t index = 0) {
    const boost::json::object& entry = result.entries.at(index).as_object();
    return entry.contains("MessageArgs") ? entry.at("MessageArgs").as_array()
                                         : boost::json::array();
}

class AccountValidation : public sim_testing::sim_root {
protected:
    result_record result = general_error();

    void add_user(int slot, const char* name) {
        ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
        ASSERT_EQ(UtilSetUserName(slot, name), 0);
        ASSERT_EQ(UtilSetLANPriv(slot, PRIV_USER), 0);
        ASSERT_EQ(PSCommit(), 0);
        ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
    }
};

TEST_F(AccountValidation, UserNamesTake4To15CharactersWithoutBlanks) {
    EXPECT_EQ(validate_user_name(value("abcdefghijklmno"), 3, action, result), "abcdefghijklmno");
    EXPECT_EQ(validate_user_name(value("abcd"), 3, action, result), "abcd");
    EXPECT_TRUE(result.entries.empty());
    for (const char* refused : {"abcdefghijklmnop", "abc", "ab cd", "abc\tdef",
                                "ab\x01"
                                "cd"}) {
        result_record refusal = general_error();
        EXPECT_FALSE(validate_user_name(value(refused), 3, action, refusal)) << refused;
        EXPECT_EQ(ids(refusal), ids_of("Base.1.10.PropertyValueFormatError")) << refused;
    }
}

TEST_F(AccountValidation, UserNameMustBeANonEmptyString) {
    EXPECT_FALSE(validate_user_name(value(42), 3, action, result));
    EXPECT_FALSE(validate_user_name(value(""), 3, action, result));
    EXPECT_EQ(ids(result), std::vector<std::string>(2, "Base.1.10.PropertyValueTypeError"));
    EXPECT_EQ(args_of(result, 1), (boost::json::array{"is an empty string", "UserName"}));
}

TEST_F(AccountValidation, ANameOfAnotherSlotIsADuplicateButItsOwnIsNot) {
    add_user(4, "carol");
    EXPECT_EQ(validate_user_name(value("carol"), 4, action, result), "carol");
    EXPECT_FALSE(validate_user_name(value("carol"), 5, action, result));
    EXPECT_EQ(ids(result), ids_of("Base.1.10.ActionParameterDuplicate"));
    EXPECT_EQ(args_of(result), (boost::json::array{action, "UserName"}));
}

TEST_F(AccountValidation, PasswordsTake8To20CharactersAndAreNeverShown) {
    EXPECT_TRUE(validate_password(value("12345678"), result));
    EXPECT_TRUE(validate_password(value("12345678901234567890"), result));
    EXPECT_TRUE(result.entries.empty());
    for (const std::string& refused : std::vector<std::string>{"1234567", "123456789012345678901",
                                                               std::string("1234\0"
                                                                           "5678",
                                                                           9)}) {
        result_record refusal = general_error();
        EXPECT_FALSE(validate_password(value(refused), refusal));
        EXPECT_EQ(ids(refusal), ids_of("Base.1.10.PropertyValueFormatError"));
        EXPECT_EQ(boost::json::serialize(refusal.entries).find(refused), std::string::npos);
    }
    EXPECT_FALSE(validate_password(value(true), result));
    EXPECT_FALSE(validate_password(value(""), result));
    EXPECT_EQ(ids(result), std::vector<std::string>(2, "Base.1.10.PropertyValueTypeError"));
}

TEST_F(AccountValidation, PasswordComplexityAppliesOnlyWhileItIsOn) {
    EXPECT_TRUE(validate_password(value("abcdefgh"), result));
    ASSERT_TRUE(platform::set_sim_setting("Users.PasswordComplexity", "1"));
    EXPECT_FALSE(validate_password(value("abcdefgh"), result));
    EXPECT_EQ(ids(result), ids_of("Base.1.10.PropertyValueFormatError"));
    EXPECT_TRUE(validate_password(value("Abcdef1!"), result));
}

TEST_F(AccountValidation, RoleIdsMapToPrivilegeLevels) {
    EXPECT_EQ(validate_role_id(value("Administrator"), 3, result), PRIV_ADMINISTRATOR);
    EXPECT_EQ(validate_role_id(value("Operator"), 3, result), PRIV_OPERATOR);
    EXPECT_EQ(validate_role_id(value("ReadOnly"), 16, result), PRIV_USER);
    EXPECT_TRUE(result.entries.empty());
    EXPECT_FALSE(validate_role_id(value("Callback"), 3, result));
    EXPECT_FALSE(validate_role_id(value("Administrators1x"), 3, result));
    EXPECT_FALSE(validate_role_id(value(4), 3, result));
    EXPECT_EQ(ids(result), (std::vector<std::string>{"Base.1.10.PropertyValueTypeError",
                                                     "Base.1.10.PropertyValueFormatError",
                                                     "Base.1.10.PropertyValueFormatError"}));
}

TEST_F(AccountValidation, TheReservedAdministratorKeepsItsRole) {
    EXPECT_FALSE(validate_role_id(value("Administrator"), 2, result));
    EXPECT_EQ(ids(result), ids_of("Base.1.10.PropertyNotWritable"));
    result_record not_text = general_error();
    EXPECT_FALSE(validate_role_id(value(nullptr), 2, not_text));
    EXPECT_EQ(ids(not_text), ids_of("Base.1.10.PropertyValueFormatError"));
}

TEST_F(AccountValidation, SnmpProtocolsComeFromTheirLists) {
    auto settings = validate_snmp(
        parse(R"({"AuthenticationProtocol":"HMAC_SHA96","EncryptionProtocol":"CFB128_AES128"})"),
        unknown_property::in_patch(), result);
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->authentication_protocol, 2);
    EXPECT_EQ(settings->encryption_protocol, 2);
    EXPECT_FALSE(settings->authentication_key);
    EXPECT_FALSE(validate_snmp(parse(R"({"AuthenticationProtocol":"SHA256","EncryptionProtocol":1,
                                          "AuthenticationKeySet":true})"),
                               unknown_property::in_patch(), result));
    EXPECT_EQ(ids(result), (std::vector<std::string>{"Base.1.10.PropertyValueNotInList",
                                                     "Base.1.10.PropertyValueTypeError",
                                                     "Base.1.10.PropertyNotWritable"}));
}

TEST_F(AccountValidation, SnmpKeysNeed8CharactersOfBothCasesAndDigits) {
    EXPECT_TRUE(is_legal_snmp_key("Abcdefg1"));
    for (const char* illegal : {"Abcdef1", "abcdefg1", "ABCDEFG1", "Abcdefgh"})
        EXPECT_FALSE(is_legal_snmp_key(illegal));
    EXPECT_FALSE(validate_snmp(parse(R"({"EncryptionKey":"abcdefg1"})"),
                               unknown_property::in_patch(), result));
    EXPECT_EQ(ids(result), ids_of("TWR.1.0.OemSnmpv3IllegalKey"));
    EXPECT_EQ(boost::json::serialize(result.entries).find("abcdefg1"), std::string::npos);
}

TEST_F(AccountValidation, UnknownMembersAreReportedAsTheRequestKindAsks) {
    EXPECT_FALSE(
        validate_snmp(parse(R"({"Community":"x"})"), unknown_property::in_post(action), result));
    EXPECT_FALSE(
        validate_snmp(parse(R"({"Community":"x"})"), unknown_property::in_patch(), result));
    EXPECT_EQ(ids(result), (std::vector<std::string>{"Base.1.10.ActionParameterUnknown",
                                                     "Base.1.10.PropertyUnknown"}));
    EXPECT_EQ(args_of(result, 0), (boost::json::array{action, "SNMP/Community"}));
}

TEST_F(AccountValidation, AccountTypesAreANonEmptyListOfRedfishAndSnmp) {
    EXPECT_TRUE(validate_account_types(parse(R"(["Redfish","SNMP"])"), result));
    EXPECT_FALSE(validate_account_types(parse("[]"), result));
    EXPECT_FALSE(validate_account_types(parse(R"(["Redfish","IPMI"])"), result));
    EXPECT_FALSE(validate_account_types(value("Redfish"), result));
    EXPECT_EQ(ids(result), (std::vector<std::string>{"Base.1.10.PropertyValueTypeError",
                                                     "Base.1.10.PropertyValueFormatError",
                                                     "Base.1.10.PropertyValueTypeError"}));
    EXPECT_EQ(args_of(result, 0), (boost::json::array{"is an empty array", "AccountTypes"}));
}

TEST_F(AccountValidation, LockedMayOnlyBeCleared) {
    EXPECT_TRUE(validate_unlock(value(false), result));
    EXPECT_FALSE(validate_unlock(value(true), result));
    EXPECT_FALSE(validate_unlock(value("false"), result));
    EXPECT_EQ(ids(result), (std::vector<std::string>{"Base.1.10.PropertyValueNotInList",
                                                     "Base.1.10.PropertyValueTypeError"}));
}

TEST_F(AccountValidation, LockoutValuesHaveInclusiveRanges) {
    EXPECT_EQ(
        require_integer_up_to(value(0), max_lockout_threshold, "AccountLockoutThreshold", result),
        0);
    EXPECT_EQ(
        require_integer_up_to(value(5), max_lockout_threshold, "AccountLockoutThreshold", result),
        5);
    EXPECT_EQ(
        require_integer_up_to(value(0), max_lockout_seconds, "AccountLockoutDuration", result), 0);
    EXPECT_EQ(
        require_integer_up_to(value(1800), max_lockout_seconds, "AccountLockoutDuration", result),
        1800);
    EXPECT_TRUE(result.entries.empty());
    EXPECT_FALSE(
        require_integer_up_to(value(6), max_lockout_threshold, "AccountLockoutThreshold", result));
    EXPECT_FALSE(
        require_integer_up_to(value(1801), max_lockout_seconds, "AccountLockoutDuration", result));
    EXPECT_FALSE(require_integer_up_to(value(-1), max_lockout_seconds,
                                       "AccountLockoutCounterResetAfter", result));
    EXPECT_FALSE(
        require_integer_up_to(value(18446744073709551615ull), max_lockout_seconds, "x", result));
    EXPECT_FALSE(require_integer_up_to(value("3"), max_lockout_threshold, "AccountLockoutThreshold",
                                       result));
    EXPECT_FALSE(require_integer_up_to(value(2.5), max_lockout_threshold, "AccountLockoutThreshold",
                                       result));
    EXPECT_EQ(ids(result),
              (std::vector<std::string>{
                  "Base.1.10.PropertyValueFormatError", "Base.1.10.PropertyValueFormatError",
                  "Base.1.10.PropertyValueFormatError", "Base.1.10.PropertyValueFormatError",
                  "Base.1.10.PropertyValueTypeError", "Base.1.10.PropertyValueTypeError"}));
}

TEST_F(AccountValidation, APostReportsEveryMissingAndRefusedPropertyAtOnce) {
    const boost::json::value body = parse(R"({"Enabled":"yes","Id":"7","Shell":"/bin/sh"})");
    read_account_request(body.as_object(), {true, 3, action}, result);
    EXPECT_EQ(ids(result),
              (std::vector<std::string>{
                  "Base.1.10.PropertyMissing", "Base.1.10.PropertyMissing",
                  "Base.1.10.PropertyMissing", "Base.1.10.PropertyValueTypeError",
                  "Base.1.10.PropertyNotWritable", "Base.1.10.ActionParameterUnknown"}));
}

TEST_F(AccountValidation, APatchReadsOnlyWhatItNames) {
    const boost::json::value body =
        parse(R"({"Password":"Secret-123","Enabled":false,"Locked":false,"Shell":1})");
    account_changes changes =
        read_account_request(body.as_object(), {false, 3, action + "/4"}, result);
    EXPECT_EQ(ids(result), ids_of("Base.1.10.PropertyUnknown"));
    EXPECT_EQ(changes.password, "Secret-123");
    EXPECT_EQ(changes.enabled, false);
    EXPECT_TRUE(changes.unlock);
    EXPECT_FALSE(changes.user_name || changes.privilege || changes.snmp);
}

TEST(ServiceAddress, SchemeHostAndPort) {
    for (const char* good :
         {"ldap://dir.example", "ldaps://dir.example:636", "ldap://10.0.0.5:389/dc=example",
          "ldap://[fd00::5]:389", "ldaps://[fd00::5]", "ldap://host:65535"})
        EXPECT_EQ(check_service_address(good), address_fault::none) << good;
    for (const char* bad :
         {"dir.example", "http://dir.example", "LDAP://dir.example", "ldap://", "ldap://:389",
          "ldap://dir example", "ldap://[fd00::5", "ldap://[]:389", "ldap://[fd00::5]389"})
        EXPECT_EQ(check_service_address(bad), address_fault::bad_address) << bad;
    for (const char* bad_port : {"ldap://host:", "ldap://host:ldap", "ldap://host:0",
                                 "ldap://host:65536", "ldap://[fd00::5]:x", "ldap://host:123456"})
        EXPECT_EQ(check_service_address(bad_port), address_fault::bad_port) << bad_port;
}

TEST(ServiceAddress, EachRefusedEntryGetsItsMessage) {
    result_record result = general_error();
    EXPECT_FALSE(validate_service_addresses(parse(R"(["ldap://a:389","ftp://b","ldap://c:x",7])"),
                                            "LDAP/ServiceAddresses", result));
    EXPECT_EQ(ids(result), (std::vector<std::string>{"TWR.1.0.OemLdapBadServiceAddresses",
                                                     "TWR.1.0.OemLdapBadPortNumber",
                                                     "Base.1.10.PropertyValueTypeError"}));
    EXPECT_EQ(args_of(result, 0), (boost::json::array{"ftp://b", "LDAP/ServiceAddresses"}));
    EXPECT_EQ(validate_service_addresses(parse(R"(["ldaps://[::1]:636"])"), "LDAP/ServiceAddresses",
                                         result),
              std::vector<std::string>{"ldaps://[::1]:636"});
}

TEST(DirectoryText, MustBeANonEmptyTextTheSettingsFileKeeps) {
    result_record result = general_error();
    EXPECT_EQ(
        validate_directory_text(value("cn=bmc,dc=example"), "LDAP/Authentication/Username", result),
        "cn=bmc,dc=example");
    EXPECT_FALSE(validate_directory_text(value(""), "p", result));
    EXPECT_FALSE(validate_directory_text(value(1), "p", result));
    EXPECT_FALSE(validate_directory_text(value("a\nServiceEnabled=1"), "p", result));
    EXPECT_FALSE(validate_directory_text(value(" secret"), "p", result, true));
    EXPECT_EQ(ids(result),
              (std::vector<std::string>{
                  "Base.1.10.PropertyValueTypeError", "Base.1.10.PropertyValueTypeError",
                  "Base.1.10.PropertyValueFormatError", "Base.1.10.PropertyValueFormatError"}));
    EXPECT_EQ(boost::json::serialize(result.entries).find(" secret"), std::string::npos);
}

class RoleMappings : public ::testing::Test {
protected:
    const std::vector<role_mapping> stored{{"alice", "", "Operator"},
                                           {"", "admins", "Administrator"}};
    result_record result = general_error();

    std::optional<std::vector<role_mapping>> patch(const char* json) {
        return validate_role_mappings(parse(json), stored, "LDAP/RemoteRoleMapping", result);
    }
};

TEST_F(RoleMappings, EmptyObjectsKeepNullRemovesObjectsChangeOrAdd) {
    auto mappings =
        patch(R"([null, {"LocalRole":"ReadOnly"}, {"RemoteUser":"bob","LocalRole":"Operator"}])");
    ASSERT_TRUE(mappings) << boost::json::serialize(result.entries);
    ASSERT_EQ(mappings->size(), 2u);
    EXPECT_EQ((*mappings)[0].remote_group, "admins");
    EXPECT_EQ((*mappings)[0].local_role, "ReadOnly");
    EXPECT_EQ((*mappings)[1].remote_user, "bob");
    auto kept = patch("[{}]");
    ASSERT_TRUE(kept);
    ASSERT_EQ(kept->size(), 1u);
    EXPECT_EQ((*kept)[0].remote_user, "alice");
}

TEST_F(RoleMappings, Refusals) {
    EXPECT_FALSE(patch(R"([{}, {}, {}])"));
    EXPECT_FALSE(patch(R"([{}, {}, {"LocalRole":"Operator"}])"));
    EXPECT_FALSE(patch(R"([{}, {}, {"RemoteUser":"carol"}])"));
    EXPECT_FALSE(patch(R"([{"LocalRole":"User"}])"));
    EXPECT_FALSE(patch(R"(["alice"])"));
    EXPECT_FALSE(patch(R"([{},{},{},{},{},{}])"));
    EXPECT_FALSE(patch(R"({"RemoteUser":"x"})"));
    EXPECT_EQ(
        ids(result),
        (std::vector<std::string>{
            "Base.1.10.InvalidIndex", "Base.1.10.PropertyMissing", "Base.1.10.PropertyMissing",
            "TWR.1.0.OemLdapBadLocalRole", "Base.1.10.PropertyValueFormatError",
            "Base.1.10.PropertyValueFormatError", "Base.1.10.PropertyValueTypeError"}));
    EXPECT_EQ(args_of(result, 0), (boost::json::array{"2"}));
    EXPECT_EQ(args_of(result, 1), (boost::json::array{"RemoteUser or RemoteGroup"}));
}

using AccountSettings = sim_testing::sim_root;

template <class stage>
bool store_alone(stage put) {
    settings_batch batch;
    return put(batch) && batch.commit();
}

TEST_F(AccountSettings, ThePolicyIsStoredBesideOtherKeysForTheOwnerOnly) {
    sim_testing::write_text(path("/nv/redfish/accountservice.ini"),
                            "[AccountService]\nAuthFailureLoggingThreshold=4\n");
    EXPECT_EQ(read_account_policy().lockout_duration, account_policy().lockout_duration);
    ASSERT_TRUE(store_alone([](settings_batch& batch) {
        return stage_account_policy({5, 1800, 0}, batch);
    }));
    const account_policy stored = read_account_policy();
    EXPECT_EQ(stored.lockout_threshold, 5);
    EXPECT_EQ(stored.lockout_duration, 1800);
    EXPECT_EQ(stored.counter_reset_after, 0);
    const std::string text = sim_testing::file_text(path("/nv/redfish/accountservice.ini"));
    EXPECT_NE(text.find("AuthFailureLoggingThreshold=4"), std::string::npos);
    EXPECT_NE(text.find("AccountLockoutEnabled=1"), std::string::npos);
    struct stat status {};
    ASSERT_EQ(stat(path("/nv/redfish/accountservice.ini").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(AccountSettings, DirectorySettingsSurviveARoundTrip) {
    directory_settings settings;
    settings.enabled = true;
    settings.service_addresses = {"ldaps://[fd00::5]:636", "ldap://dir.example"};
    settings.username = "cn=bmc,dc=example,dc=com";
    settings.password = "p=a;s#s";
    settings.base_distinguished_names = {"dc=example,dc=com", "ou=a\\;b,dc=example"};
    settings.groupname_attribute = "cn";
    settings.role_mappings = {{"alice", "", "Operator"}, {"", "admins", "Administrator"}};
    ASSERT_TRUE(store_alone([&](settings_batch& batch) {
        return stage_directory_settings(directory_service::ldap, settings, batch);
    }));
    const directory_settings read = read_directory_settings(directory_service::ldap);
    EXPECT_TRUE(read.enabled);
    EXPECT_EQ(read.service_addresses, settings.service_addresses);
    EXPECT_EQ(read.password, settings.password);
    EXPECT_EQ(read.base_distinguished_names, settings.base_distinguished_names);
    EXPECT_EQ(read.groupname_attribute, "cn");
    ASSERT_EQ(read.role_mappings.size(), 2u);
    EXPECT_EQ(read.role_mappings[1].remote_group, "admins");
    EXPECT_EQ(UtilGetLdapEnable(), 1);
    EXPECT_EQ(UtilGetNewADEnable(), 0);

    settings.role_mappings.pop_back();
    ASSERT_TRUE(store_alone([&](settings_batch& batch) {
        return stage_directory_settings(directory_service::ldap, settings, batch);
    }));
    EXPECT_EQ(read_directory_settings(directory_service::ldap).role_mappings.size(), 1u);
}

TEST_F(AccountSettings, OneExternalServiceAtATime) {
    result_record result = general_error();
    external_account_provider ldap(directory_service::ldap);
    external_account_provider active_directory(directory_service::active_directory);
    ldap.read_request(parse(R"({"ServiceEnabled":true})"), result);
    active_directory.read_request(parse(R"({"ServiceEnabled":true})"), result);
    check_provider_switches(ldap, active_directory, result);
    EXPECT_EQ(ids(result), ids_of("TWR.1.0.OemOnlyOneAuthenticationServiceCanBeEnabled"));

    ASSERT_TRUE(platform::set_directory_provider_enabled(platform::directory_provider::ad, true));
    result_record running = general_error();
    external_account_provider enable_ldap(directory_service::ldap);
    external_account_provider ad_as_stored(directory_service::active_directory);
    enable_ldap.read_request(parse(R"({"ServiceEnabled":true})"), running);
    check_provider_switches(enable_ldap, ad_as_stored, running);
    EXPECT_EQ(ids(running), ids_of("TWR.1.0.OemOtherAuthenticationServiceIsRunning"));
    EXPECT_EQ(args_of(running), (boost::json::array{"ActiveDirectory", "LDAP"}));

    result_record swapped = general_error();
    external_account_provider disable_ad(directory_service::active_directory);
    disable_ad.read_request(parse(R"({"ServiceEnabled":false})"), swapped);
    check_provider_switches(enable_ldap, disable_ad, swapped);
    EXPECT_TRUE(swapped.entries.empty());

    ASSERT_TRUE(platform::set_radius_server("192.0.2.10"));
    ASSERT_TRUE(
        platform::set_directory_provider_enabled(platform::directory_provider::radius, true));
    check_provider_switches(enable_ldap, disable_ad, swapped);
    EXPECT_EQ(args_of(swapped), (boost::json::array{"Radius", "LDAP"}));
}

}  // namespace
