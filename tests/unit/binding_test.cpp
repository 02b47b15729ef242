// Names that bind code to tables: a misspelt one must fail here, not
// answer 404 or 500 at run time.
#include <gtest/gtest.h>

#include <boost/regex.hpp>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "frontend/message_table.h"
#include "service/handler_classes.h"

namespace rf = odata::redfish;

TEST(HandlerBinding, EveryHandlerClassIsRouted) {
    std::set<std::string_view> routed;
    for (const rf::route& entry : rf::route_table()) routed.insert(entry.handler_class);
    for (const auto& [name, factory] : rf::handler_classes()) {
        EXPECT_TRUE(routed.count(name)) << name << " has a factory but no route";
    }
}

// Every message id written as a literal in the service's sources.
TEST(MessageBinding, EveryMessageIdInTheSourcesIsInTheTable) {
    const boost::regex id_literal(R"re("((Base\.1\.10|TWR\.1\.0)\.[A-Za-z]+)")re");
    const std::filesystem::path root = BMC_SOURCE_DIR;
    size_t ids_seen = 0;
    for (const char* folder :
         {"frontend", "framework", "security", "resources", "update", "tasks", "service"}) {
        if (!std::filesystem::exists(root / folder)) continue;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
            if (entry.path().extension() != ".cpp") continue;
            std::ifstream file(entry.path());
            std::stringstream text;
            text << file.rdbuf();
            const std::string source = text.str();
            for (boost::sregex_iterator it(source.begin(), source.end(), id_literal), end;
                 it != end; ++it) {
                ++ids_seen;
                const std::string id = (*it)[1];
                EXPECT_NO_THROW(rf::message(id)) << id << " in " << entry.path();
            }
        }
    }
    EXPECT_GT(ids_seen, 50u);
}
