// Building blocks of request validation: the messages about one property
// of a request body, and the checks that many properties share.
#pragma once

#include <algorithm>
#include <boost/json.hpp>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "frontend/message.h"

namespace odata::redfish {

// Shown in messages instead of a secret (passwords, keys, tokens).
inline constexpr const char* hidden_value = "******";

// The text a message shows for a value: a string as it stands, anything
// else as JSON.
std::string shown_value(const boost::json::value& value);

// A message with arguments (value text, path) and the related property
// "/<path>"; path names the property, "LDAP/ServiceAddresses" for a nested one.
void add_value_message(result_record& result, std::string_view message_id,
                       const std::string& value_text, const std::string& path);
// A message whose only argument is the property path.
void add_property_message(result_record& result, std::string_view message_id,
                          const std::string& path);

// Whether a table of property names holds name.
template <std::size_t N>
bool listed_in(const std::string_view (&table)[N], std::string_view name) {
    return std::find(std::begin(table), std::end(table), name) != std::end(table);
}

// Reports a property that the resource does not have: PropertyUnknown in
// a PATCH, ActionParameterUnknown naming the action in a POST.
class unknown_property {
public:
    static unknown_property in_patch() { return unknown_property(""); }
    static unknown_property in_post(std::string action) {
        return unknown_property(std::move(action));
    }
    void report(result_record& result, const std::string& path) const;

private:
    explicit unknown_property(std::string action) : action_(std::move(action)) {}
    std::string action_;
};

// A non-empty string; otherwise PropertyValueTypeError, with the argument
// "is an empty string" for "".
const boost::json::string* require_text(const boost::json::value& value, const std::string& path,
                                        result_record& result, bool secret = false);

// A boolean; otherwise PropertyValueTypeError.
std::optional<bool> require_boolean(const boost::json::value& value, const std::string& path,
                                    result_record& result);

// A string that is one of names; PropertyValueTypeError for a value that is
// not a string, PropertyValueNotInList for another text.
std::optional<std::string> require_one_of(const boost::json::value& value,
                                          std::initializer_list<std::string_view> names,
                                          const std::string& path, result_record& result);

// An integer from min to max; PropertyValueTypeError for a value that is
// not an integer, PropertyValueFormatError outside the range (however large).
std::optional<long> require_integer_in_range(const boost::json::value& value, long min, long max,
                                             const std::string& path, result_record& result);
inline std::optional<long> require_integer_up_to(const boost::json::value& value, long max,
                                                 const std::string& path, result_record& result) {
    return require_integer_in_range(value, 0, max, path, result);
}

// A text that a settings file can hold unchanged: no control characters,
// no blank at either end. PropertyValueFormatError otherwise.
bool require_storable(const boost::json::string& text, const std::string& path,
                      result_record& result, bool secret = false);

// One member of an object in a request, with its property path.
struct request_member {
    std::string name;
    const boost::json::value& value;
    std::string path;
};

// Calls read for each member of the object at path; PropertyValueTypeError
// when the value is not an object.
void for_each_member(const boost::json::value& value, const std::string& path,
                     result_record& result, const std::function<void(const request_member&)>& read);

// The body of a PATCH or POST: a non-empty JSON object. Throws 400 EmptyJSON
// for {} and UnrecognizedRequestBody for anything that is not an object.
const boost::json::object& request_object(const boost::json::value& body);

// One writable property of a PATCH: its name and the reader that
// validates it into the handler's change record.
template <class changes>
struct patch_property {
    std::string_view name;
    void (*read)(const request_member&, changes&, result_record&);
};

template <class changes, size_t size>
bool has_patch_property(const patch_property<changes> (&table)[size], std::string_view name) {
    return std::any_of(
        std::begin(table), std::end(table),
        [name](const patch_property<changes>& property) { return property.name == name; });
}

// Reads member through its row of table; a name without a row is unknown.
template <class changes, size_t size>
void read_patch_property(const patch_property<changes> (&table)[size], const request_member& member,
                         changes& target, result_record& result) {
    for (const patch_property<changes>& property : table) {
        if (property.name == member.name) return property.read(member, target, result);
    }
    unknown_property::in_patch().report(result, member.path);
}

// Throws 400 PropertyValueConflict: property cannot take its value while
// other has its own.
[[noreturn]] void throw_property_conflict(const std::string& property, const std::string& other);

// Throws 400 with the messages when result holds any.
void refuse_if_reported(const result_record& result);

// Reads every member of a PATCH body through its row of table; 400 with
// every refusal.
template <class changes, size_t size>
changes read_patch_body(const patch_property<changes> (&table)[size],
                        const boost::json::value& body) {
    result_record result = general_error();
    changes read;
    for (const auto& [name, value] : request_object(body))
        read_patch_property(table, {std::string(name), value, std::string(name)}, read, result);
    refuse_if_reported(result);
    return read;
}

}  // namespace odata::redfish
