#include "frontend/response_headers.h"

#include <array>
#include <iostream>
#include <utility>

#include "frontend/exception_http.h"
#include "frontend/request_context.h"
#include "frontend/status_line.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

constexpr std::pair<response_header, std::string_view> header_names[] = {
    {response_header::location, "Location"},
    {response_header::retry_after, "Retry-After"},
    {response_header::content_disposition, "Content-Disposition"},
};

std::array<std::string, std::size(header_names)>& kept_headers() {
    static std::array<std::string, std::size(header_names)> kept;
    return kept;
}

// "GET, PATCH"
std::string method_list(unsigned methods) {
    std::string list;
    for (const auto& [name, code] : method_names) {
        if (!(methods & (1u << code))) continue;
        if (!list.empty()) list += ", ";
        list += name;
    }
    return list;
}

void write_resource_headers(const resource_headers& resource) {
    if (resource.allowed_methods)
        std::cout << "Allow: " << method_list(resource.allowed_methods) << "\r\n";
    if (!resource.schema_uri.empty())
        std::cout << "Link: <" << resource.schema_uri << ">; rel=describedby\r\n";
    if (resource.allowed_methods) std::cout << "Cache-Control: no-cache\r\n";
    if (!resource.etag.empty()) std::cout << "ETag: " << resource.etag << "\r\n";
}

void write_origin() {
    char origin[1025] = {};
    if (get_cgi_env("HTTP_ORIGIN", origin, 1024) >= 0)
        std::cout << "Access-Control-Allow-Origin: " << origin << "\r\n";
}

void write_content_headers(std::size_t length, body_kind kind) {
    if (kind != body_kind::none) std::cout << "Content-Length: " << length << "\r\n";
    switch (kind) {
        case body_kind::none:
            std::cout << "OData-Version: 4.0\r\n";
            break;
        case body_kind::empty:
            break;
        case body_kind::json:
            std::cout << "OData-Version: 4.0\r\nContent-Type: application/json; charset=UTF-8\r\n";
            break;
        case body_kind::xml:
            std::cout << "Content-Type: application/xml\r\n";
            break;
        case body_kind::attachment:
            std::cout << "Content-Type: application/octet-stream\r\nCache-Control: no-store\r\n";
            break;
    }
    std::cout << "\r\n";
}

}  // namespace

void write_status_line(int status) {
    std::string line;
    status_line(status, line);
    std::cout << line;
}

void set_response_header(response_header header, std::string value) {
    kept_headers()[static_cast<size_t>(header)] = std::move(value);
}

void write_header_block(std::size_t length, body_kind kind, const resource_headers& resource) {
    for (const auto& [header, name] : header_names) {
        std::string& value = kept_headers()[static_cast<size_t>(header)];
        if (!value.empty()) std::cout << name << ": " << value << "\r\n";
        value.clear();
    }
    write_resource_headers(resource);
    write_origin();
    write_content_headers(length, kind);
}

void throw_method_not_allowed(unsigned allowed_methods) {
    exception_http answer(405);
    answer.add_header("Allow", method_list(allowed_methods));
    throw answer;
}

void reset_response_headers() {
    for (std::string& value : kept_headers()) value.clear();
}

}  // namespace odata::redfish
