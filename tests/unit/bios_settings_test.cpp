// The BIOS setup attributes: checks of a change, the simulated BIOS taking
// over pending changes, and the registry made from the table.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "base/bmc_root.h"
#include "hardware_root_fixture.h"
#include "platform/libbios.h"
#include "platform/sim/bios_attributes.h"
#include "platform/sim/bios_security.h"
#include "resources/systems/bios_attribute_registry.h"
#include "resources/systems/bios_attributes.h"

using namespace odata::redfish;

namespace {

class BiosSettings : public sim_testing::hardware_root {
protected:
    void SetUp() override {
        hardware_root::SetUp();
        std::filesystem::create_directories(platform::bmc_path("/tmp"));
    }
    void write_pending(const std::string& text) {
        std::ofstream(platform::bmc_path("/tmp/user_save_to_bios.json")) << text;
    }
};

std::vector<std::string> refusals(const std::string& attributes, boost::json::object& changes) {
    const boost::json::value value = boost::json::parse(attributes);
    result_record result;
    read_bios_attribute_changes({"Attributes", value, "Attributes"}, changes, result);
    std::vector<std::string> ids;
    for (const boost::json::value& entry : result.entries)
        ids.push_back(std::string(entry.at("MessageId").as_string()) + " " +
                      std::string(entry.at("RelatedProperties").at(0).as_string()));
    return ids;
}

}  // namespace

TEST_F(BiosSettings, EveryRefusalIsCollectedAndOnlyGoodChangesKept) {
    boost::json::object changes;
    const std::vector<std::string> refused = refusals(
        R"({"VTd": "Disabled", "Nope": 1, "BiosRevision": "1", "BootTimeout": 65535,
            "BootMode": "uefi", "QuietBoot": 0, "BootURI": ""})",
        changes);
    EXPECT_EQ(refused,
              (std::vector<std::string>{"Base.1.10.PropertyUnknown /Attributes/Nope",
                                        "Base.1.10.PropertyNotWritable /Attributes/BiosRevision",
                                        "Base.1.10.PropertyValueNotInList /Attributes/BootMode",
                                        "Base.1.10.PropertyValueTypeError /Attributes/QuietBoot"}));
    EXPECT_EQ(changes,
              (boost::json::object{{"VTd", "Disabled"}, {"BootTimeout", 65535}, {"BootURI", ""}}));
}

TEST_F(BiosSettings, PostTakesOnlyChangesThatFitAndEmptiesTheHandOver) {
    write_pending(R"({"Attributes": {"VTd": "Disabled", "BootTimeout": 99999, "BiosRevision": "x",
                                     "Unknown": 1}})");
    ASSERT_TRUE(platform::post_bios_settings());
    const boost::json::object current = current_bios_attributes();
    EXPECT_EQ(current.at("VTd"), "Disabled");
    EXPECT_EQ(current.at("BootTimeout"), 5);
    EXPECT_EQ(current.at("BiosRevision"), "2.1.0");
    EXPECT_FALSE(current.contains("Unknown"));
    EXPECT_TRUE(pending_bios_attributes().empty());

    write_pending("{not json");
    ASSERT_TRUE(platform::post_bios_settings());
    EXPECT_EQ(current_bios_attributes(), current);
}

TEST_F(BiosSettings, PendingChangesAddUp) {
    ASSERT_TRUE(add_pending_bios_attributes({{"VTd", "Disabled"}, {"BootTimeout", 3}}));
    ASSERT_TRUE(add_pending_bios_attributes({{"BootTimeout", 4}}));
    EXPECT_EQ(pending_bios_attributes(),
              (boost::json::object{{"VTd", "Disabled"}, {"BootTimeout", 4}}));
}

TEST(BiosAttributeRegistry, EveryAttributeWithItsKindsLimits) {
    const boost::json::object registry = bios_attribute_registry();
    EXPECT_EQ(registry.at("Id"), "BiosAttributeRegistry.1.0.0");
    const boost::json::array& entries = registry.at("RegistryEntries").at("Attributes").as_array();
    ASSERT_FALSE(entries.empty());
    for (const boost::json::value& entry : entries) {
        const boost::json::object& attribute = entry.as_object();
        const std::string_view type = attribute.at("Type").as_string();
        EXPECT_EQ(attribute.contains("Value"), type == "Enumeration");
        EXPECT_EQ(attribute.contains("UpperBound"), type == "Integer");
        EXPECT_EQ(attribute.contains("MaxLength"), type == "String");
        EXPECT_NE(find_bios_attribute(attribute.at("AttributeName").as_string()), nullptr);
    }
}

TEST_F(BiosSettings, ThePasswordNeedsTheOneInForceAndComesIntoForceAtTheNextStart) {
    EXPECT_EQ(UtilBiosChangePassword(BIOS_PASSWORD_ADMINISTRATOR, "guess", "First-1"),
              PLT_ERR_STATE);
    ASSERT_EQ(UtilBiosChangePassword(BIOS_PASSWORD_ADMINISTRATOR, "", "First-1"), PLT_OK);
    // Until the BIOS starts, the old (no) password stays in force.
    EXPECT_EQ(UtilBiosChangePassword(BIOS_PASSWORD_ADMINISTRATOR, "First-1", "Second-2"),
              PLT_ERR_STATE);
    ASSERT_TRUE(platform::post_bios_password());
    EXPECT_EQ(platform::bios_password_state(), "set");
    EXPECT_EQ(UtilBiosChangePassword(BIOS_PASSWORD_ADMINISTRATOR, "", "Second-2"), PLT_ERR_STATE);
    for (const char* refused : {"", "twenty-one-characters", "tab\there"})
        EXPECT_EQ(UtilBiosChangePassword(BIOS_PASSWORD_ADMINISTRATOR, "First-1", refused),
                  PLT_ERR_ARGUMENT);
    EXPECT_EQ(UtilBiosChangePassword(BIOS_PASSWORD_ADMINISTRATOR + 1, "First-1", "Second-2"),
              PLT_ERR_ARGUMENT);
    ASSERT_EQ(UtilBiosChangePassword(BIOS_PASSWORD_ADMINISTRATOR, "First-1", "Second-2"), PLT_OK);
    EXPECT_EQ(platform::bios_password_state(), "set, new one pending");
    std::ifstream file(platform::bios_security_file());
    const std::string stored((std::istreambuf_iterator<char>(file)),
                             std::istreambuf_iterator<char>());
    EXPECT_EQ(stored.find("First-1"), std::string::npos);
    EXPECT_EQ(stored.find("Second-2"), std::string::npos);
}

TEST_F(BiosSettings, ResetKeysEmptiesOrRestoresTheKeyDatabases) {
    St_SecureBootKeys keys{};
    ASSERT_EQ(UtilGetSecureBootKeys(&keys), PLT_OK);
    EXPECT_EQ(keys.pk, 1);
    ASSERT_EQ(UtilSecureBootResetKeys(SECURE_BOOT_DELETE_PK), PLT_OK);
    ASSERT_EQ(UtilGetSecureBootKeys(&keys), PLT_OK);
    EXPECT_EQ((std::vector<int>{keys.pk, keys.kek, keys.db, keys.dbx}),
              (std::vector<int>{0, 1, 2, 1}));
    ASSERT_EQ(UtilSecureBootResetKeys(SECURE_BOOT_DELETE_ALL_KEYS), PLT_OK);
    ASSERT_EQ(UtilGetSecureBootKeys(&keys), PLT_OK);
    EXPECT_EQ((std::vector<int>{keys.pk, keys.kek, keys.db, keys.dbx}),
              (std::vector<int>{0, 0, 0, 0}));
    EXPECT_EQ(UtilSecureBootResetKeys(7), PLT_ERR_ARGUMENT);
    ASSERT_EQ(UtilSecureBootResetKeys(SECURE_BOOT_RESET_ALL_KEYS_TO_DEFAULT), PLT_OK);
    ASSERT_EQ(UtilGetSecureBootKeys(&keys), PLT_OK);
    EXPECT_EQ((std::vector<int>{keys.pk, keys.kek, keys.db, keys.dbx}),
              (std::vector<int>{1, 1, 2, 1}));
}
