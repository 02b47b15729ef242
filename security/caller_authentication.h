// Who sends a request: Basic credentials or a session token, refused with
// 401 otherwise.
#pragma once

#include "frontend/request_context.h"

namespace odata::redfish {

// Fills the caller's name, privilege and session into context, or throws
// the 401 answer after logging the failure.
void authenticate_caller(request_context& context);

// True while /nv/redfish/redfish.ini lets the routes marked open be read
// without credentials ([Service] UnauthenticatedServiceRoot=1).
bool open_reads_allowed();

}  // namespace odata::redfish
