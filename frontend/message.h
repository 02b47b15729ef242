// Redfish message entries and the result record that collects them.
#pragma once

#include <boost/json.hpp>
#include <map>
#include <string>
#include <vector>

namespace odata::redfish {

// Keys "MessageId", "Severity", "Message", "Resolution"; a missing key
// reads as an empty text.
using message_descriptor = std::map<std::string, std::string>;
using message_args = std::vector<std::string>;

// What a handler hands to the writer: a code ("Success", "GeneralError",
// "OemXyz", ...), a message text and the message entries in order.
struct result_record {
    std::string code;
    std::string message;
    boost::json::array entries;
};

inline constexpr const char* general_error_text =
    "A general error has occurred. See ExtendedInfo for more information.";

// A result with code "GeneralError" and the general error text.
result_record general_error();

// Substitutes args into descriptor["Message"] (first occurrence of each
// "%i", two characters erased) and appends one entry to result.
void add_message(result_record& result, message_descriptor& descriptor, const message_args& args,
                 const message_args& related);

// The same for a message of the message table, by its id.
void add_message(result_record& result, const std::string& message_id,
                 const message_args& args = {}, const message_args& related = {});

}  // namespace odata::redfish
