// One segment of a route path: a literal name, or a regular expression that
// must match the whole segment and whose groups are captured.
#pragma once

#include <boost/regex_fwd.hpp>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace odata::redfish {

// A member number, such as the "3" of ".../Sensors/3".
constexpr std::string_view number_expression = "([0-9]+)";

class segment_pattern {
public:
    // text is a literal name, or an expression when it begins with "(";
    // it must outlive the pattern (route paths are constant data). The
    // usual shapes, "([0-9]+)", "(.+)", "(A|B)" and "(A|B)([0-9]+)" with
    // names of letters, digits, "_" and "-", are matched without the
    // expression engine, whose compiled programs take kilobytes each.
    explicit segment_pattern(std::string_view text);
    segment_pattern(segment_pattern&&) noexcept;
    segment_pattern& operator=(segment_pattern&&) noexcept;
    ~segment_pattern();

    std::string_view text() const { return text_; }

    // Whether segment matches as a whole; when it does, the texts of the
    // groups that took part are appended to captures.
    bool match(std::string_view segment, std::vector<std::string>& captures) const {
        return shape_ == shape::literal ? segment == text_ : match_pattern(segment, captures);
    }

private:
    enum class shape { literal, number, any, names, names_then_number, expression };

    bool match_pattern(std::string_view segment, std::vector<std::string>& captures) const;
    bool match_names(std::string_view segment, std::vector<std::string>& captures) const;
    bool match_expression(std::string_view segment, std::vector<std::string>& captures) const;

    std::string_view text_;
    shape shape_ = shape::literal;
    std::vector<std::string_view> names_;       // of the names shapes, in their order
    std::unique_ptr<boost::regex> expression_;  // of the expression shape
};

}  // namespace odata::redfish
