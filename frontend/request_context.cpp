#include "frontend/request_context.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <new>

#include "frontend/exception_http.h"
#include "frontend/message.h"
#include "frontend/request_parameters.h"
#include "frontend/response_headers.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

// A PATCH may echo what a GET gave, "@odata.etag" and "@odata.type" among
// it: such annotations are not properties and are ignored. A body of
// nothing else changes nothing.
void drop_odata_annotations(boost::json::value& body) {
    boost::json::object* object = body.if_object();
    if (!object || object->empty()) return;
    boost::json::object properties;
    for (const auto& member : *object) {
        if (member.key().substr(0, 7) != "@odata.")
            properties.emplace(member.key(), member.value());
    }
    if (properties.empty()) throw_http_error(400, "Base.1.10.NoOperation");
    *object = std::move(properties);
}

// The raw body of the current request and its length; null when none.
char* request_body = nullptr;
std::size_t request_body_length = 0;
// Raised to end the service loop after the current request.
unsigned char stop_flag = 0;

constexpr int max_body_length = 32768;

void drain(std::istream& input) {
    while (input.get() != std::char_traits<char>::eof()) {
    }
}

// Shown in messages instead of a secret's value.
bool names_secret(std::string_view name) {
    for (std::string_view secret : {"Password", "Key", "Token"})
        if (name.find(secret) != std::string_view::npos) return true;
    return false;
}

// A NUL cannot reach the C strings of the platform intact: every string
// (name or value) holding one is reported under its property path.
void report_nul_strings(const boost::json::value& value, const std::string& path,
                        result_record& result) {
    if (const boost::json::string* text = value.if_string()) {
        if (text->find('\0') == boost::json::string::npos) return;
        const std::string shown = names_secret(path) ? "******" : boost::json::serialize(value);
        add_message(result, "Base.1.10.PropertyValueFormatError", {shown, path}, {"/" + path});
    } else if (const boost::json::object* object = value.if_object()) {
        for (const auto& [name, member] : *object) {
            const std::string member_path =
                path.empty() ? std::string(name) : path + "/" + std::string(name);
            if (name.find('\0') != boost::json::string_view::npos)
                add_message(result, "Base.1.10.PropertyUnknown", {member_path},
                            {"/" + member_path});
            report_nul_strings(member, member_path, result);
        }
    } else if (const boost::json::array* array = value.if_array()) {
        for (std::size_t index = 0; index < array->size(); ++index)
            report_nul_strings((*array)[index], path + "/" + std::to_string(index), result);
    }
}

}  // namespace

std::optional<std::string_view> request_context::body() const {
    if (!request_body) return std::nullopt;
    return std::string_view(request_body, request_body_length);
}

boost::json::value request_context::body_json() const {
    boost::system::error_code error;
    boost::json::value parsed = boost::json::parse(body().value_or(""), error);
    if (error) throw malformed_json();
    result_record result = general_error();
    report_nul_strings(parsed, "", result);
    if (!result.entries.empty()) throw_http_result(400, result);
    if (method == PATCH) drop_odata_annotations(parsed);
    return parsed;
}

std::optional<std::string_view> request_context::segment_from_end(size_t count) const {
    std::string_view rest = uri;
    for (;; --count) {
        const size_t slash = rest.rfind('/');
        if (count == 0) return slash == std::string_view::npos ? rest : rest.substr(slash + 1);
        if (slash == std::string_view::npos) return std::nullopt;
        rest = rest.substr(0, slash);
    }
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
    const std::string_view method = request_parameter(cgi_parameter::request_method).value_or("");
    for (const auto& entry : method_names) {
        if (method == entry.name) return entry.code;
    }
    write_status_line(405);
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
    request_body_length = static_cast<std::size_t>(input.gcount());
    request_body[request_body_length] = '\0';
    input.clear();
    drain(input);
}

void release_request_input() {
    if (request_parameter(cgi_parameter::request_method) == "GET") {
        FreeCGIResoure();
    } else {
        delete[] request_body;
        free_cgi_vars();
    }
    request_body = nullptr;
    request_body_length = 0;
}

void request_stop() { stop_flag = 1; }

bool stop_requested() { return stop_flag != 0; }

}  // namespace odata::redfish
