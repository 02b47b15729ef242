// The FastCGI accept loop: one request at a time, each handed to the
// function that serves it (the request pipeline, one floor up).
#pragma once

#include <istream>

namespace odata::redfish {

// Serves the current request; its body, if any, is read from the stream.
using request_server = void (*)(std::istream& body);

// Returns the process exit status: 0 when the shared parameter area is not
// available, the accept fails or a stop was requested; 1 and 2 when the
// FastCGI library or request cannot be initialised.
int run_service(request_server serve_request);

}  // namespace odata::redfish
