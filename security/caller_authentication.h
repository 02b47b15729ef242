// Who sends a request: Basic credentials or a session token, refused with
// 401 otherwise.
#pragma once

#include "frontend/request_context.h"

namespace odata::redfish {

// Fills the caller's name, privilege and session into context, or throws
// the 401 answer after logging the failure.
void authenticate_caller(request_context& context);

// True for a GET of the version document, the service root, the service
// document or the metadata while /nv/redfish/redfish.ini allows reading
// them without credentials ([Service] UnauthenticatedServiceRoot=1).
bool reads_without_credentials(const request_context& context);

}  // namespace odata::redfish
