// The checks of the configuration files that clients bring back: the
// BMC's exported configuration and the BIOS configuration file.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "message_ids.h"
#include "resources/systems/biosfile.h"
#include "update/common_fileoperation.h"

using namespace odata::redfish;

namespace {}  // namespace

TEST(ConfigurationFiles, AnExportedFileGivesItsIpmiSectionAndNothingElseDoes) {
    std::string reason;
    EXPECT_EQ(ipmi_section(boost::json::parse(R"({"Version":1,"IPMIConfig":{"a":1}})"), reason),
              R"({"a":1})");
    for (const char* refused :
         {R"([1])", R"({"Version":2,"IPMIConfig":{}})", R"({"Version":"1","IPMIConfig":{}})",
          R"({"Version":1,"IPMIConfig":[]})", R"({"Version":1})",
          R"({"Version":1,"IPMIConfig":{},"Users":{}})"}) {
        reason.clear();
        EXPECT_EQ(ipmi_section(boost::json::parse(refused), reason), "") << refused;
        EXPECT_FALSE(reason.empty()) << refused;
    }
}

TEST(ConfigurationFiles, ABiosFileIsTakenWholeOrNotAtAll) {
    result_record result;
    const std::optional<boost::json::object> changes =
        bios_file_changes(R"({"Attributes":{"VTd":"Disabled","BootTimeout":9}})", result);
    ASSERT_TRUE(changes);
    EXPECT_EQ(*changes, (boost::json::object{{"VTd", "Disabled"}, {"BootTimeout", 9}}));
    EXPECT_TRUE(result.entries.empty());

    EXPECT_FALSE(bios_file_changes(
        R"({"Attributes":{"VTd":"Disabled","BootTimeout":-1,"Colour":"red","BiosRevision":"9"}})",
        result));
    const std::vector<std::string> ids = message_ids(result);
    ASSERT_EQ(ids.size(), 4u);
    EXPECT_EQ(ids[0], "TWR.1.0.OemFileoperationErrorMessage");
    for (const char* refused : {"", "{\"Attributes\":1}", "{\"Attributes\":{},\"More\":1}", "[]"}) {
        result_record refusal;
        EXPECT_FALSE(bios_file_changes(refused, refusal)) << refused;
        EXPECT_EQ(message_ids(refusal).front(), "TWR.1.0.OemFileoperationErrorMessage");
    }
}
