// Root of every handler: one virtual operation per HTTP method, in method
// code order, with "405 Method Not Allowed" defaults.
#pragma once

#include <string>

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

    // True when the handler checks the caller itself for this method (the
    // login), so the pipeline lets the request through unauthenticated.
    virtual bool authenticates_itself(int method) const;

    // The operation of a method code.
    int call(int method);

protected:
    // Handlers are owned by a shared pointer made for their own class.
    ~webservice() = default;

    // The default headers: CORS, Content-Length, Content-Type, empty line.
    static void write_default_headers(unsigned length);

    request_context& context_;
};

// Writes the 405 status line and throws odata::redfish::exception.
[[noreturn]] void method_not_allowed();

}  // namespace odata::redfish
