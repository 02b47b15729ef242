// Which privilege each resource and method requires.
#pragma once

#include <string>

#include "frontend/request_context.h"

namespace odata::redfish {

// What a request may touch without the required privilege when it is the
// caller's own.
enum class own_target { none, session, account };

struct required_privilege {
    unsigned privileges;  // every one of these bits, or ...
    own_target own;       // ... ConfigureSelf on the caller's own target
};

// The privilege that a method on path requires.
required_privilege privilege_required(const std::string& path, int method);

// True when the authenticated caller of context may run its method on its path.
bool caller_is_authorised(const request_context& context);

}  // namespace odata::redfish
