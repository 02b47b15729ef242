// GET of a resource: answered again from the process's response cache
// while nothing the answer was built from has changed.
#pragma once

#include "framework/webservice.h"
#include "frontend/request_context.h"

namespace odata::redfish {

void get_resource(webservice& handler, request_context& context);

}  // namespace odata::redfish
