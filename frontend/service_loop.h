// The FastCGI accept loop: one request at a time, each handed to the
// request pipeline.
#pragma once

namespace odata::redfish {

// Returns the process exit status: 0 when the shared parameter area is not
// available, the accept fails or a stop was requested; 1 and 2 when the
// FastCGI library or request cannot be initialised.
int run_service();

}  // namespace odata::redfish
