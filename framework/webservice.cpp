#include "framework/webservice.h"

#include <iostream>

#include "frontend/exception_http.h"
#include "platform/libweb.h"

namespace odata::redfish {

void method_not_allowed() {
    std::cout << "Status: 405 Method Not Allowed\r\n";
    throw exception("");
}

void webservice::write_default_headers(unsigned length) {
    char origin[1025] = {};
    if (get_cgi_env("HTTP_ORIGIN", origin, 1024) >= 0)
        std::cout << "Access-Control-Allow-Origin: " << origin << "\r\n";
    std::cout << "Content-Length: " << length << "\r\n"
              << "Content-Type: application/json; charset=UTF-8\r\n\r\n";
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

bool webservice::authenticates_itself(int) const { return false; }

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
