#include "framework/segment_pattern.h"

#include <boost/regex.hpp>

namespace odata::redfish {
namespace {

constexpr std::string_view any_group = "(.+)";
constexpr std::string_view digits = "0123456789";
constexpr std::string_view name_characters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-";

// No resource name is longer than a file name; longer segments are not
// given to the regular-expression engine, whose matching recurses per
// character.
constexpr size_t max_pattern_segment = 255;

bool all_of(std::string_view text, std::string_view characters) {
    return !text.empty() && text.find_first_not_of(characters) == std::string_view::npos;
}

// The names of "(A|B)" or "(A|B)([0-9]+)", and whether digits follow them;
// none for any other text.
std::vector<std::string_view> plain_names(std::string_view text, bool& then_number) {
    const size_t close = text.find(')');
    if (text.front() != '(' || close == std::string_view::npos) return {};
    const std::string_view rest = text.substr(close + 1);
    if (!rest.empty() && rest != number_expression) return {};
    then_number = !rest.empty();
    std::vector<std::string_view> names;
    std::string_view alternatives = text.substr(1, close - 1);
    while (true) {
        const size_t bar = alternatives.find('|');
        const std::string_view name = alternatives.substr(0, bar);
        if (!all_of(name, name_characters)) return {};
        names.push_back(name);
        if (bar == std::string_view::npos) return names;
        alternatives.remove_prefix(bar + 1);
    }
}

}  // namespace

segment_pattern::segment_pattern(std::string_view text) : text_(text) {
    bool then_number = false;
    if (text.empty() || text.front() != '(') {
        shape_ = shape::literal;
    } else if (text == number_expression) {
        shape_ = shape::number;
    } else if (text == any_group) {
        shape_ = shape::any;
    } else if (!(names_ = plain_names(text, then_number)).empty()) {
        shape_ = then_number ? shape::names_then_number : shape::names;
    } else {
        shape_ = shape::expression;
        expression_ = std::make_unique<boost::regex>(text.begin(), text.end());
    }
}

segment_pattern::segment_pattern(segment_pattern&&) noexcept = default;
segment_pattern& segment_pattern::operator=(segment_pattern&&) noexcept = default;
segment_pattern::~segment_pattern() = default;

bool segment_pattern::match_pattern(std::string_view segment,
                                    std::vector<std::string>& captures) const {
    if (segment.size() > max_pattern_segment) return false;
    switch (shape_) {
        case shape::number:
            if (!all_of(segment, digits)) return false;
            captures.emplace_back(segment);
            return true;
        case shape::any:
            if (segment.empty()) return false;
            captures.emplace_back(segment);
            return true;
        case shape::names:
        case shape::names_then_number:
            return match_names(segment, captures);
        default:
            return match_expression(segment, captures);
    }
}

// As the expression would: the first name, in order, that the rest of the
// segment fits after.
bool segment_pattern::match_names(std::string_view segment,
                                  std::vector<std::string>& captures) const {
    for (std::string_view name : names_) {
        if (segment.substr(0, name.size()) != name) continue;
        const std::string_view rest = segment.substr(name.size());
        if (shape_ == shape::names ? !rest.empty() : !all_of(rest, digits)) continue;
        captures.emplace_back(name);
        if (shape_ == shape::names_then_number) captures.emplace_back(rest);
        return true;
    }
    return false;
}

bool segment_pattern::match_expression(std::string_view segment,
                                       std::vector<std::string>& captures) const {
    boost::match_results<std::string_view::const_iterator> groups;
    if (!boost::regex_match(segment.begin(), segment.end(), groups, *expression_)) return false;
    const int group_count = static_cast<int>(groups.size());
    for (int group = 1; group < group_count; ++group) {
        // Not str(), which appends a character at a time.
        if (groups[group].matched) captures.emplace_back(groups[group].first, groups[group].second);
    }
    return true;
}

}  // namespace odata::redfish
