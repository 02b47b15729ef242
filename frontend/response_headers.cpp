#include "frontend/response_headers.h"

#include <array>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>

#include "frontend/exception_http.h"
#include "frontend/request_context.h"
#include "frontend/request_parameters.h"
#include "frontend/status_line.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

constexpr std::pair<response_header, std::string_view> header_names[] = {
    {response_header::location, "Location"},
    {response_header::retry_after, "Retry-After"},
    {response_header::content_disposition, "Content-Disposition"},
};

// Room for a typical block, so that it is built in one allocation.
constexpr std::size_t header_block_bytes = 512;

std::array<std::string, std::size(header_names)>& kept_headers() {
    static std::array<std::string, std::size(header_names)> kept;
    return kept;
}

// Every set of methods, one bit per method code.
constexpr unsigned method_sets = 1u << (DELETE + 1);

// "GET, PATCH"; built once per set, as every answer lists its methods.
const std::string& method_list(unsigned methods) {
    static const std::array<std::string, method_sets> lists = [] {
        std::array<std::string, method_sets> built;
        for (unsigned set = 0; set < method_sets; ++set) {
            for (const auto& [name, code] : method_names) {
                if (!(set & (1u << code))) continue;
                if (!built[set].empty()) built[set] += ", ";
                built[set] += name;
            }
        }
        return built;
    }();
    return lists.at(methods);
}

void add_header(std::string& block, std::string_view name, std::string_view value) {
    block.append(name).append(": ").append(value).append("\r\n");
}

void add_resource_headers(std::string& block, const resource_headers& resource) {
    if (resource.allowed_methods) add_header(block, "Allow", method_list(resource.allowed_methods));
    if (!resource.schema_uri.empty())
        block.append("Link: <").append(resource.schema_uri).append(">; rel=describedby\r\n");
    if (resource.allowed_methods) block.append("Cache-Control: no-cache\r\n");
    if (!resource.etag.empty()) add_header(block, "ETag", resource.etag);
}

void add_origin(std::string& block) {
    constexpr std::size_t max_origin_length = 1024;
    if (std::optional<std::string_view> origin = request_parameter(cgi_parameter::origin))
        add_header(block, "Access-Control-Allow-Origin", origin->substr(0, max_origin_length));
}

void add_content_headers(std::string& block, std::size_t length, body_kind kind) {
    if (kind != body_kind::none) add_header(block, "Content-Length", std::to_string(length));
    switch (kind) {
        case body_kind::none:
            block.append("OData-Version: 4.0\r\n");
            break;
        case body_kind::empty:
            break;
        case body_kind::json:
            block.append("OData-Version: 4.0\r\nContent-Type: application/json; charset=UTF-8\r\n");
            break;
        case body_kind::xml:
            block.append("Content-Type: application/xml\r\n");
            break;
        case body_kind::attachment:
            block.append("Content-Type: application/octet-stream\r\nCache-Control: no-store\r\n");
            break;
    }
    block.append("\r\n");
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

// Written in one piece: the stream passes each write on to the server. The
// block's buffer is kept for the next request's.
void write_header_block(std::size_t length, body_kind kind, const resource_headers& resource) {
    thread_local std::string block;
    block.clear();
    block.reserve(header_block_bytes);
    for (const auto& [header, name] : header_names) {
        std::string& value = kept_headers()[static_cast<size_t>(header)];
        if (!value.empty()) add_header(block, name, value);
        value.clear();
    }
    add_resource_headers(block, resource);
    add_origin(block);
    add_content_headers(block, length, kind);
    std::cout << block;
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
