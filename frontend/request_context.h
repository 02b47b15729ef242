// The current request: method, body and CGI variables, and what the
// pipeline learns about it on the way to the handler.
#pragma once

#include <boost/json.hpp>
#include <istream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace odata::redfish {

class auth;

enum method_code : int { GET = 1, PATCH = 2, POST = 3, PUT = 4, DELETE = 5 };

struct method_name {
    const char* name;
    int code;
};
inline constexpr method_name method_names[] = {
    {"GET", GET}, {"PATCH", PATCH}, {"POST", POST}, {"PUT", PUT}, {"DELETE", DELETE}};

struct request_context {
    std::string uri;                    // normalised path
    std::string query;                  // QUERY_STRING
    int method = 0;                     // method_code
    std::vector<std::string> captures;  // texts of the route's pattern groups
    std::string_view handler_class;     // the route's class name
    std::shared_ptr<auth> authenticator;
    std::string user_name;           // the authenticated caller
    int privilege = 0;               // the caller's privilege level
    int session_limit = 0;           // login: sessions allowed at once
    int session_id = 0;              // the caller's session, 0 for Basic
    int account_slot = -1;           // the caller's user-table slot, -1 for other users
    std::istream* upload = nullptr;  // an upload's unread body, for its handler

    // The request body read by read_request_input, by its length (it may
    // hold NUL bytes); none when there is no body.
    std::optional<std::string_view> body() const;
    // The body parsed as JSON; throws malformed_json when it is not JSON,
    // and 400 with PropertyValueFormatError for each string holding a NUL.
    boost::json::value body_json() const;
    // The path's segment so many from the end (0: the last, "" after a
    // trailing "/"); none when the path has fewer.
    std::optional<std::string_view> segment_from_end(size_t count) const;
    // Route capture index as a number; -1 when absent, not a number or too large.
    int capture_number(size_t index) const;
};

// A request body that is not JSON; answered 400 MalformedJSON.
struct malformed_json : std::runtime_error {
    malformed_json() : std::runtime_error("malformed JSON body") {}
};

// The method code of REQUEST_METHOD; any other method writes the 405 status
// line and throws odata::redfish::exception.
int request_method();

// Reads the body of PATCH, POST, PUT and DELETE from input into the body
// buffer (at most CONTENT_LENGTH bytes, the rest drained), or parses the
// query string of a GET.
void read_request_input(std::istream& input);
// Releases what read_request_input read.
void release_request_input();

// Raised by any part to end the service loop after the current request.
void request_stop();
bool stop_requested();

}  // namespace odata::redfish
