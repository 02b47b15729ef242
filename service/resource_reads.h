// GET of a resource: answered again from the process's response cache
// while nothing the answer was built from has changed.
#pragma once

#include "framework/webservice.h"
#include "frontend/request_context.h"

namespace odata::redfish {

// A reusable route's answer (see route_reusable) is kept per process and
// caller; others are built each time.
void get_resource(webservice& handler, request_context& context, bool reusable);

}  // namespace odata::redfish
