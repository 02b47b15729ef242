// Root of every handler: one virtual operation per HTTP method, in method
// code order, with "405 Method Not Allowed" defaults.
#pragma once

#include <string>
#include <string_view>

#include "frontend/request_context.h"

namespace odata::redfish {

class webservice {
public:
    explicit webservice(request_context& context) : context_(context) {}

    virtual int write_headers(unsigned length, const std::string& body);
    virtual int get(request_context& context);
    virtual int patch(request_context& context);
    virtual int post(request_context& context);
    virtual int put(request_context& context);
    virtual int del(request_context& context);
    virtual void send_response();

    // The operation of a method code.
    int call(int method);

    // The methods the handler's class serves, one bit (1 << method code)
    // each; its factory sets them.
    unsigned allowed_methods() const { return allowed_methods_; }
    void set_allowed_methods(unsigned methods) { allowed_methods_ = methods; }

    // The schema that describes the resource ("Chassis"); empty for none.
    virtual std::string_view schema_name() const { return {}; }

protected:
    // Handlers are owned by a shared pointer made for their own class.
    ~webservice() = default;

    // The header block of a JSON answer: with Allow, Link and
    // Cache-Control on GET, and the answer's ETag when it has one.
    void write_default_headers(unsigned length) const;
    virtual std::string_view answer_etag() const { return {}; }

    // Answers 405 with the methods the class serves in Allow.
    [[noreturn]] void method_not_allowed() const;

    request_context& context_;

private:
    unsigned allowed_methods_ = 1u << GET;
};

}  // namespace odata::redfish
