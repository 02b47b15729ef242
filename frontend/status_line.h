// HTTP status number -> CGI status line.
#pragma once

#include <string>

namespace odata::redfish {

// Appends "Status: <n> <reason>\r\n" for a known status; nothing otherwise.
void status_line(int status, std::string& text);

}  // namespace odata::redfish
