// Segments matched without the expression engine must match, and capture,
// exactly as the expression would.
#include <gtest/gtest.h>

#include <boost/regex.hpp>
#include <set>
#include <string>
#include <vector>

#include "framework/segment_pattern.h"
#include "service/route_table.h"

namespace rf = odata::redfish;

namespace {

// What the expression engine makes of segment: whether it matches, and
// the groups that took part.
bool expression_match(const std::string& pattern, const std::string& segment,
                      std::vector<std::string>& captures) {
    boost::smatch groups;
    if (!boost::regex_match(segment, groups, boost::regex(pattern))) return false;
    for (int group = 1; group < static_cast<int>(groups.size()); ++group)
        if (groups[group].matched) captures.push_back(groups[group].str());
    return true;
}

// Every pattern segment of the route table, "{n}" as its expression.
std::set<std::string> route_patterns() {
    std::set<std::string> patterns = {"([0-9]+)"};
    for (const rf::route& row : rf::route_table()) {
        std::string_view path = row.path;
        for (size_t start = 0; start < path.size();) {
            const size_t end = std::min(path.find('/', start), path.size());
            const std::string_view segment = path.substr(start, end - start);
            if (!segment.empty() && segment.front() == '(') patterns.emplace(segment);
            start = end + 1;
        }
    }
    return patterns;
}

// Segments near pattern: its words alone, run together, with digits and
// other characters around them, and prefixes of them.
std::vector<std::string> near_segments(const std::string& pattern) {
    std::vector<std::string> words = {"", "7", "x", "HA-RAID", std::string(300, '7')};
    std::string word;
    for (char c : pattern + "(") {
        if (isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '-' || c == '.') {
            word += c;
        } else if (!word.empty()) {
            words.push_back(word);
            word.clear();
        }
    }
    std::vector<std::string> segments;
    for (const std::string& first : words) {
        for (const char* suffix : {"", "0", "12", "x", "1x", "a1", ".Volume.3"}) {
            segments.push_back(first + suffix);
            if (!first.empty()) segments.push_back(first.substr(0, first.size() - 1) + suffix);
        }
        for (const std::string& second : words) segments.push_back(first + second);
    }
    return segments;
}

TEST(SegmentPattern, MatchesAndCapturesAsTheExpressionDoesForEveryRoute) {
    const std::set<std::string> patterns = route_patterns();
    ASSERT_GT(patterns.size(), 20u);
    for (const std::string& pattern : patterns) {
        const rf::segment_pattern compiled(pattern);
        for (const std::string& segment : near_segments(pattern)) {
            std::vector<std::string> expected, actual = {"kept"};
            const bool expected_match =
                segment.size() <= 255 && expression_match(pattern, segment, expected);
            expected.insert(expected.begin(), "kept");
            EXPECT_EQ(compiled.match(segment, actual), expected_match) << pattern << " " << segment;
            if (expected_match)
                EXPECT_EQ(actual, expected) << pattern << " " << segment;
            else
                EXPECT_EQ(actual, std::vector<std::string>{"kept"}) << pattern << " " << segment;
        }
    }
}

TEST(SegmentPattern, NamesAreTriedInOrderAndLiteralsMatchExactly) {
    std::vector<std::string> captures;
    EXPECT_TRUE(rf::segment_pattern("(NIC|StagingNIC|N)([0-9]+)").match("NIC12", captures));
    EXPECT_EQ(captures, (std::vector<std::string>{"NIC", "12"}));
    captures.clear();
    EXPECT_TRUE(rf::segment_pattern("(N|NIC)([0-9]+)").match("NIC1", captures));
    EXPECT_EQ(captures, (std::vector<std::string>{"NIC", "1"}));
    EXPECT_FALSE(rf::segment_pattern("(BMC|BIOS)").match("bmc", captures));
    EXPECT_FALSE(rf::segment_pattern("Chassis").match("Chassis1", captures));
    EXPECT_TRUE(rf::segment_pattern("Chassis").match("Chassis", captures));
    EXPECT_EQ(captures.size(), 2u);
}

}  // namespace
