// Names that bind code to tables: a misspelt one must fail here, not
// answer 404 or 500 at run time.
#include <gtest/gtest.h>

#include <boost/regex.hpp>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include "framework/schema_files.h"
#include "frontend/message_table.h"

namespace rf = odata::redfish;

namespace {

using match_check = std::function<void(const boost::smatch&, const std::filesystem::path&)>;

// Calls check with each match of pattern in the service's C++ sources;
// answers the number of matches.
size_t for_each_match_in_sources(const boost::regex& pattern, const match_check& check) {
    const std::filesystem::path root = BMC_SOURCE_DIR;
    size_t matches = 0;
    for (const char* folder :
         {"frontend", "framework", "security", "resources", "update", "tasks", "service"}) {
        if (!std::filesystem::exists(root / folder)) continue;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
            if (entry.path().extension() != ".cpp") continue;
            std::ifstream file(entry.path());
            std::stringstream text;
            text << file.rdbuf();
            const std::string source = text.str();
            for (boost::sregex_iterator it(source.begin(), source.end(), pattern), end; it != end;
                 ++it, ++matches)
                check(*it, entry.path());
        }
    }
    return matches;
}

}  // namespace

// Every message id written as a literal in the service's sources.
TEST(MessageBinding, EveryMessageIdInTheSourcesIsInTheTable) {
    const boost::regex id_literal(R"re("((Base\.1\.10|TWR\.1\.0)\.[A-Za-z]+)")re");
    const size_t ids =
        for_each_match_in_sources(id_literal, [](const auto& match, const auto& file) {
            EXPECT_NO_THROW(rf::message(match[1].str())) << match[1] << " in " << file;
        });
    EXPECT_GT(ids, 50u);
}

// Resources take their version from the schema table, which $metadata
// and the schema collection publish: every name they ask for is there.
TEST(SchemaBinding, EveryServedSchemaIsInTheTable) {
    const boost::regex looked_up(R"re(schema_file_of\("(\w+)"\))re");
    const size_t lookups =
        for_each_match_in_sources(looked_up, [](const auto& match, const auto& file) {
            EXPECT_NE(rf::find_schema_file(match[1].str()), nullptr) << match[1] << " in " << file;
        });
    EXPECT_GT(lookups, 5u);
    const boost::regex literal_version(R"re(redfish\(context,\s*"\w+",\s*"v\d)re");
    for_each_match_in_sources(literal_version, [](const auto& match, const auto& file) {
        ADD_FAILURE() << match[0] << " in " << file << ": a version outside the schema table";
    });
}
