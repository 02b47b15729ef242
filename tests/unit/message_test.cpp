#include <gtest/gtest.h>

#include <boost/json.hpp>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "frontend/message.h"
#include "frontend/message_table.h"

namespace rf = odata::redfish;
namespace json = boost::json;

namespace {

constexpr std::string_view base_prefix = "Base.1.10.";
constexpr std::string_view oem_prefix = "TWR.1.0.";

bool starts_with(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

json::object load_base_registry() {
    std::ifstream in(REDFISH_DATA_DIR "/registries/Base.1.10.3.json");
    std::stringstream text;
    text << in.rdbuf();
    return json::parse(text.str()).as_object().at("Messages").as_object();
}

std::vector<std::string> keys_of(const json::object& object) {
    std::vector<std::string> keys;
    for (const auto& member : object) {
        keys.emplace_back(member.key());
    }
    return keys;
}

const json::object& only_entry(const rf::result_record& result) {
    EXPECT_EQ(result.entries.size(), 1u);
    return result.entries.at(0).as_object();
}

rf::message_descriptor descriptor_with(const std::string& text) {
    return {{"MessageId", "Test.1.0.Probe"},
            {"Severity", "Warning"},
            {"Message", text},
            {"Resolution", "None"}};
}

// Substitutes through add_message and returns the resulting message text.
std::string substituted(const std::string& text, const rf::message_args& args) {
    rf::result_record result;
    auto descriptor = descriptor_with(text);
    rf::add_message(result, descriptor, args, {});
    return std::string(only_entry(result).at("Message").as_string());
}

}  // namespace

// --- The message table -----------------------------------------------------

TEST(MessageTable, BaseRowsMatchDmtfRegistry) {
    const json::object registry = load_base_registry();
    ASSERT_FALSE(registry.empty());

    int base_rows = 0;
    for (auto row = rf::message_table_begin(); row != rf::message_table_end(); ++row) {
        if (!starts_with(row->id, base_prefix)) {
            continue;
        }
        ++base_rows;
        const std::string name(row->id.substr(base_prefix.size()));
        SCOPED_TRACE(name);
        const json::value* entry = registry.if_contains(name);
        ASSERT_NE(entry, nullptr) << "not in the Base registry";
        const json::object& reg = entry->as_object();
        EXPECT_EQ(reg.at("Severity"), reg.at("MessageSeverity"));
        EXPECT_EQ(row->severity, reg.at("Severity").as_string());
        EXPECT_EQ(row->message, reg.at("Message").as_string());
        EXPECT_EQ(row->resolution, reg.at("Resolution").as_string());
    }
    EXPECT_GT(base_rows, 0);
}

TEST(MessageTable, IdsAreUniqueAndGroupedBaseThenOem) {
    std::set<std::string_view> seen;
    bool in_oem_group = false;
    for (auto row = rf::message_table_begin(); row != rf::message_table_end(); ++row) {
        SCOPED_TRACE(std::string(row->id));
        EXPECT_TRUE(seen.insert(row->id).second) << "duplicate id";
        if (starts_with(row->id, oem_prefix)) {
            in_oem_group = true;
        } else {
            EXPECT_TRUE(starts_with(row->id, base_prefix)) << "unknown registry";
            EXPECT_FALSE(in_oem_group) << "Base row after the OEM group";
        }
        EXPECT_FALSE(row->severity.empty());
        EXPECT_FALSE(row->message.empty());
        EXPECT_FALSE(row->resolution.empty());
    }
}

TEST(MessageTable, LookupGivesDescriptorAndRejectsUnknownId) {
    const auto lockup = rf::message("TWR.1.0.AccountLockup");
    EXPECT_EQ(lockup.at("MessageId"), "TWR.1.0.AccountLockup");
    EXPECT_EQ(lockup.at("Severity"), "Warning");
    EXPECT_EQ(lockup.at("Message"), "The account was locked up.");
    EXPECT_EQ(lockup.at("Resolution"), "Please wait until the account is unlocked.");

    // Both spellings of the OK severity are sent as written.
    EXPECT_EQ(rf::message("TWR.1.0.OemRequestAcceptedMessage").at("Severity"), "Ok");
    EXPECT_EQ(rf::message("TWR.1.0.SettingsSuccess").at("Severity"), "OK");

    try {
        rf::message("Base.1.10.NoSuchMessage");
        FAIL() << "expected std::out_of_range";
    } catch (const std::out_of_range& e) {
        EXPECT_NE(std::string(e.what()).find("Base.1.10.NoSuchMessage"), std::string::npos);
    }
    // A near miss in case or prefix is not found either.
    EXPECT_THROW(rf::message("base.1.10.MalformedJSON"), std::out_of_range);
    EXPECT_THROW(rf::message("MalformedJSON"), std::out_of_range);
}

// --- Message entries ---------------------------------------------------------

TEST(AddMessage, EntryMembersAndOrder) {
    rf::result_record result;
    auto plain = descriptor_with("Plain text.");
    rf::add_message(result, plain, {}, {});
    EXPECT_EQ(json::serialize(only_entry(result)),
              R"({"MessageId":"Test.1.0.Probe","Severity":"Warning",)"
              R"("Resolution":"None","Message":"Plain text."})");

    // Related properties without arguments: no MessageArgs member.
    rf::result_record related_only;
    auto with_related = descriptor_with("Bad %1.");
    rf::add_message(related_only, with_related, {}, {"/UserName"});
    EXPECT_EQ(keys_of(only_entry(related_only)),
              (std::vector<std::string>{"MessageId", "Severity", "Resolution", "Message",
                                        "RelatedProperties"}));
    EXPECT_EQ(only_entry(related_only).at("Message"), "Bad %1.");

    rf::result_record both;
    auto full = descriptor_with("Bad %1.");
    rf::add_message(both, full, {"x"}, {"/A", "/B"});
    EXPECT_EQ(json::serialize(only_entry(both)),
              R"({"MessageId":"Test.1.0.Probe","Severity":"Warning","Resolution":"None",)"
              R"("Message":"Bad x.","MessageArgs":["x"],"RelatedProperties":["/A","/B"]})");
}

TEST(AddMessage, SubstitutionRules) {
    // Both arguments substituted and listed.
    rf::result_record result;
    rf::add_message(result, "Base.1.10.ResourceAtUriUnauthorized",
                    {"/redfish/v1/Systems", "unauthorized"});
    const auto& entry = only_entry(result);
    EXPECT_EQ(entry.at("Message"),
              "While accessing the resource at '/redfish/v1/Systems', the service received an "
              "authorization error 'unauthorized'.");
    EXPECT_EQ(entry.at("MessageArgs"), (json::array{"/redfish/v1/Systems", "unauthorized"}));
    EXPECT_EQ(entry.at("Severity"), "Critical");

    // Argument 1 is inserted before "%2" is searched, so its own "%2" is hit first.
    EXPECT_EQ(substituted("a %1 b %2", {"x%2y", "Z"}), "a xZy b %2");

    // Only the first occurrence of a placeholder is replaced.
    EXPECT_EQ(substituted("%1 and %1", {"A"}), "A and %1");

    // Two characters are erased, so "%10" leaves its "0" behind.
    EXPECT_EQ(
        substituted("%1%2%3%4%5%6%7%8%9 %10", {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"}),
        "abcdefghi j0");

    // Placeholders out of order in the text.
    EXPECT_EQ(substituted("%2 then %1", {"one", "two"}), "two then one");

    // An argument without a placeholder is still listed; a placeholder without
    // an argument stays.
    rf::result_record absent;
    auto no_slot = descriptor_with("Nothing here, %3 stays.");
    rf::add_message(absent, no_slot, {"first", "second"}, {});
    EXPECT_EQ(only_entry(absent).at("Message"), "Nothing here, %3 stays.");
    EXPECT_EQ(only_entry(absent).at("MessageArgs"), (json::array{"first", "second"}));

    // An empty argument removes its placeholder.
    EXPECT_EQ(substituted("[%1]", {""}), "[]");
}

TEST(AddMessage, DescriptorHoldsTheSubstitutedText) {
    rf::result_record result;
    auto descriptor = rf::message("Base.1.10.PropertyMissing");
    rf::add_message(result, descriptor, {"UserName"}, {"UserName"});
    EXPECT_EQ(descriptor.at("Message"),
              "The property UserName is a required property and must be included in the request.");
    EXPECT_EQ(only_entry(result).at("Message").as_string(), descriptor.at("Message"));

    // The table itself is untouched by an earlier substitution.
    EXPECT_EQ(rf::message("Base.1.10.PropertyMissing").at("Message"),
              "The property %1 is a required property and must be included in the request.");
}

TEST(AddMessage, SeveralCallsKeepOrderInOneResult) {
    rf::result_record result = rf::general_error();
    EXPECT_EQ(result.code, "GeneralError");
    EXPECT_EQ(result.message,
              "A general error has occurred. See ExtendedInfo for more information.");
    EXPECT_TRUE(result.entries.empty());

    rf::add_message(result, "Base.1.10.PropertyMissing", {"UserName"}, {"UserName"});
    rf::add_message(result, "Base.1.10.PropertyMissing", {"Password"}, {"Password"});
    rf::add_message(result, "Base.1.10.MalformedJSON");
    ASSERT_EQ(result.entries.size(), 3u);
    EXPECT_EQ(result.entries[0].at("MessageArgs"), json::array{"UserName"});
    EXPECT_EQ(result.entries[1].at("MessageArgs"), json::array{"Password"});
    EXPECT_EQ(result.entries[2].at("MessageId"), "Base.1.10.MalformedJSON");
    EXPECT_EQ(keys_of(result.entries[2].as_object()).size(), 4u);

    // An unknown id fails before anything is appended.
    EXPECT_THROW(rf::add_message(result, "TWR.1.0.NoSuchMessage"), std::out_of_range);
    EXPECT_EQ(result.entries.size(), 3u);
}
