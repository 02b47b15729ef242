// Whether the caller may run a request's method on its route.
#pragma once

#include "framework/route_privileges.h"
#include "frontend/request_context.h"

namespace odata::redfish {

// True when a caller of the given role privileges meets requirement; own
// tells whether the request's target is the caller's own.
bool requirement_met(const method_requirement& requirement, unsigned granted, bool own);

// True when the authenticated caller of context may run its method on a
// route of these privileges.
bool caller_is_authorised(const request_context& context, const route_privileges& privileges);

}  // namespace odata::redfish
