#include "resources/systems/member_uri.h"

#include "frontend/exception_http.h"

namespace odata::redfish {
namespace {

std::string captured_id(const request_context& context) {
    return context.captures.empty() ? std::string() : context.captures[0];
}

}  // namespace

int member_number(const request_context& context) { return context.capture_number(0); }

std::string member_uri(const char* collection_uri, const request_context& context) {
    const int number = member_number(context);
    return std::string(collection_uri) + "/" +
           (number >= 0 ? std::to_string(number) : captured_id(context));
}

void throw_member_not_found(const char* type, const request_context& context) {
    throw_http_error(404, "Base.1.10.ResourceNotFound", {type, captured_id(context)});
}

}  // namespace odata::redfish
