#include "framework/webservice.h"

#include <string>

#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"

namespace odata::redfish {

void webservice::method_not_allowed() const { throw_method_not_allowed(allowed_methods_); }

void webservice::write_default_headers(unsigned length) const {
    resource_headers resource;
    resource.etag = answer_etag();
    if (context_.method == GET) {
        resource.allowed_methods = allowed_methods_;
        if (const schema_file* file = find_schema_file(schema_name()))
            resource.schema_uri = schema_uri(*file);
    }
    write_header_block(length, body_kind::json, resource);
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
