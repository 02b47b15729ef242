#include "frontend/request_context.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <new>

#include "frontend/exception_http.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

// The raw body of the current request, NUL-terminated; null when none.
char* request_body = nullptr;
// Raised to end the service loop after the current request.
unsigned char stop_flag = 0;

constexpr int max_body_length = 32768;

struct method_name {
    const char* name;
    int code;
};
constexpr method_name method_names[] = {
    {"GET", GET}, {"PATCH", PATCH}, {"POST", POST}, {"PUT", PUT}, {"DELETE", DELETE}};

void drain(std::istream& input) {
    while (input.get() != std::char_traits<char>::eof()) {
    }
}

}  // namespace

const char* request_context::body() const { return request_body; }

boost::json::value request_context::body_json() const {
    boost::system::error_code error;
    boost::json::value parsed = boost::json::parse(request_body ? request_body : "", error);
    if (error) throw malformed_json();
    return parsed;
}

int request_context::capture_number(size_t index) const {
    if (index >= captures.size()) return -1;
    const std::string& text = captures[index];
    int number = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 0) return -1;
    return number;
}

int request_method() {
    char method[7] = {};
    int length = get_cgi_env("REQUEST_METHOD", method, 6);
    for (const auto& entry : method_names) {
        if (length == static_cast<int>(std::strlen(entry.name)) &&
            std::strcmp(method, entry.name) == 0)
            return entry.code;
    }
    std::cout << "Status: 405 Method Not Allowed\r\n";
    throw exception("");
}

void read_request_input(std::istream& input) {
    if (request_method() == GET) {
        cgiInitialize();
        return;
    }
    CgiVarsListHead.first = nullptr;
    CgiVarsListHead.last = &CgiVarsListHead;
    int length = get_cgi_content_length(max_body_length);
    if (length <= 0) return;
    request_body = new (std::nothrow) char[length + 1]();
    if (request_body == nullptr) {
        drain(input);
        return;
    }
    input.read(request_body, length);
    request_body[input.gcount()] = '\0';
    input.clear();
    drain(input);
}

void release_request_input() {
    char method[7] = {};
    get_cgi_env("REQUEST_METHOD", method, 6);
    if (std::strcmp(method, "GET") == 0) {
        FreeCGIResoure();
    } else {
        delete[] request_body;
        free_cgi_vars();
    }
    request_body = nullptr;
}

void request_stop() { stop_flag = 1; }

bool stop_requested() { return stop_flag != 0; }

}  // namespace odata::redfish
