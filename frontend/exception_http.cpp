#include "frontend/exception_http.h"

#include <iostream>

#include "frontend/message_table.h"
#include "frontend/result_writer.h"
#include "frontend/status_line.h"

namespace odata::redfish {

exception_http::exception_http(int status) { status_line(status, headers_); }

void exception_http::append_body(const std::string& text) { body_ += text; }

void exception_http::add_header(const std::string& line) { headers_ += line + "\r\n"; }

void exception_http::add_header(const std::string& name, const std::string& value) {
    headers_ += name + ": " + value + "\r\n";
}

const std::string& exception_http::body() const { return body_; }

const std::string& exception_http::headers() const { return headers_; }

void exception_http::write() const {
    std::cout << headers_ << "Content-Length: " << body_.size() << "\r\n\r\n" << body_;
}

void throw_http(int status) { throw exception_http(status); }

exception_http http_error(int status, const result_record& result) {
    exception_http error(status);
    error.add_header("OData-Version: 4.0");
    error.add_header("Content-Type: application/json; charset=UTF-8");
    error.append_body(render_result(result));
    return error;
}

void throw_http_result(int status, const result_record& result) {
    throw http_error(status, result);
}

void throw_http_error(int status, message_descriptor message, const message_args& args,
                      const message_args& related) {
    result_record result = general_error();
    add_message(result, message, args, related);
    throw_http_result(status, result);
}

void throw_http_error(int status, const std::string& message_id, const message_args& args,
                      const message_args& related) {
    throw_http_error(status, message(message_id), args, related);
}

void throw_insufficient_privilege() { throw_http_error(403, "Base.1.10.InsufficientPrivilege"); }

void throw_query_not_supported() { throw_http_error(400, "Base.1.10.QueryNotSupported"); }

void throw_system_lockdown() { throw_http_error(405, "TWR.1.0.OemSystemLockdownEnabled"); }

}  // namespace odata::redfish
