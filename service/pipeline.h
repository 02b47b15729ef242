// The request pipeline: from the CGI environment of one request to its
// complete response on standard output.
#pragma once

#include <istream>

namespace odata::redfish {

// Serves the current request; the body, if any, is read from input.
void run_pipeline(std::istream& input);

// REQUEST_URI with "//" collapsed and the query cut off.
std::string normalise_path(std::string_view uri);

}  // namespace odata::redfish
