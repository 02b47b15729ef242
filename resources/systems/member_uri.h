// The URI of a numbered collection member named by the request's first
// capture: "/Memory/007" is module 7, and its URI says "/Memory/7".
#pragma once

#include <string>

#include "frontend/request_context.h"

namespace odata::redfish {

std::string member_uri(const char* collection_uri, const request_context& context);

// The member's number, -1 when the capture is not one.
int member_number(const request_context& context);

// 404 ResourceNotFound naming the type and the member as the URI names it.
[[noreturn]] void throw_member_not_found(const char* type, const request_context& context);

}  // namespace odata::redfish
