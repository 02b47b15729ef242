// An exception that carries a complete error response up to the pipeline.
#pragma once

#include <string>

#include "frontend/message.h"

namespace odata::redfish {

// The service's plain exception; its text is only logged.
class exception : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class exception_http {
public:
    explicit exception_http(int status);

    virtual void append_body(const std::string& text);
    virtual void add_header(const std::string& line);
    virtual void add_header(const std::string& name, const std::string& value);
    virtual const std::string& body() const;
    virtual const std::string& headers() const;
    // Headers, Content-Length, empty line, body, to standard output.
    virtual void write() const;

private:
    std::string body_;
    std::string headers_;
};

// Status line only, empty body.
[[noreturn]] void throw_http(int status);
// A GeneralError body with one message.
[[noreturn]] void throw_http_error(int status, message_descriptor message,
                                   const message_args& args = {}, const message_args& related = {});
[[noreturn]] void throw_http_error(int status, const std::string& message_id,
                                   const message_args& args = {}, const message_args& related = {});
// An error response with the rendered result as its body, for callers that
// add headers before throwing it.
exception_http http_error(int status, const result_record& result);
// A GeneralError body with the messages already collected in result.
[[noreturn]] void throw_http_result(int status, const result_record& result);
[[noreturn]] void throw_insufficient_privilege();
[[noreturn]] void throw_query_not_supported();
[[noreturn]] void throw_system_lockdown();

}  // namespace odata::redfish
