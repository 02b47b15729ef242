#include "framework/webservice.h"

#include <iostream>
#include <utility>

#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/result_writer.h"
#include "platform/libweb.h"

namespace odata::redfish {

namespace {

constexpr std::pair<int, std::string_view> method_names[] = {
    {GET, "GET"}, {PATCH, "PATCH"}, {POST, "POST"}, {PUT, "PUT"}, {DELETE, "DELETE"}};

// "Allow: GET, PATCH\r\n"
void write_allow_header(unsigned methods) {
    std::cout << "Allow: ";
    const char* separator = "";
    for (const auto& [code, name] : method_names) {
        if (!(methods & (1u << code))) continue;
        std::cout << separator << name;
        separator = ", ";
    }
    std::cout << "\r\n";
}

// The JSON schema file that describes a resource, when the service serves it.
void write_link_header(std::string_view schema) {
    const schema_file* file = schema.empty() ? nullptr : find_schema_file(schema);
    if (file && file->json_published)
        std::cout << "Link: </redfish/v1/JsonSchemas/" << schema << ">; rel=describedby\r\n";
}

}  // namespace

void webservice::method_not_allowed() const {
    std::cout << "Status: 405 Method Not Allowed\r\n";
    write_allow_header(allowed_methods_);
    throw exception("");
}

void webservice::write_default_headers(unsigned length) const {
    char origin[1025] = {};
    if (get_cgi_env("HTTP_ORIGIN", origin, 1024) >= 0)
        std::cout << "Access-Control-Allow-Origin: " << origin << "\r\n";
    if (context_.method == GET) {
        write_allow_header(allowed_methods_);
        write_link_header(schema_name());
        std::cout << "Cache-Control: no-cache\r\n";
    }
    write_json_headers(length);
}

int webservice::write_headers(unsigned length, const std::string&) {
    write_default_headers(length);
    return 0;
}

int webservice::get(request_context&) { method_not_allowed(); }
int webservice::patch(request_context&) { method_not_allowed(); }
int webservice::post(request_context&) { method_not_allowed(); }
int webservice::put(request_context&) { method_not_allowed(); }
int webservice::del(request_context&) { method_not_allowed(); }
void webservice::send_response() {}

int webservice::call(int method) {
    switch (method) {
        case GET:
            return get(context_);
        case PATCH:
            return patch(context_);
        case POST:
            return post(context_);
        case PUT:
            return put(context_);
        case DELETE:
            return del(context_);
        default:
            method_not_allowed();
    }
}

}  // namespace odata::redfish
