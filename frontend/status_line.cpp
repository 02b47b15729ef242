#include "frontend/status_line.h"

#include <algorithm>
#include <iterator>

namespace odata::redfish {
namespace {

struct status_entry {
    int status;
    const char* line;
};

// Only these statuses have a line; any other leaves the web server's default.
constexpr status_entry status_lines[] = {
    {200, "Status: 200 OK\r\n"},
    {201, "Status: 201 Created\r\n"},
    {202, "Status: 202 Accepted\r\n"},
    {204, "Status: 204 No Content\r\n"},
    {301, "Status: 301 Moved Permanently\r\n"},
    {302, "Status: 302 Found\r\n"},
    {304, "Status: 304 Not Modified\r\n"},
    {400, "Status: 400 Bad Request\r\n"},
    {401, "Status: 401 Unauthorized\r\n"},
    {403, "Status: 403 Forbidden\r\n"},
    {404, "Status: 404 Not Found\r\n"},
    {405, "Status: 405 Method Not Allowed\r\n"},
    {406, "Status: 406 Not Acceptable\r\n"},
    {409, "Status: 409 Conflict\r\n"},
    {410, "Status: 410 Gone\r\n"},
    {411, "Status: 411 Length Required\r\n"},
    {412, "Status: 412 Precondition Failed\r\n"},
    {415, "Status: 415 Unsupported Media Type\r\n"},
    {500, "Status: 500 Internal Server Error\r\n"},
    {501, "Status: 501 Not Implemented\r\n"},
    {503, "Status: 503 Service Unavailable\r\n"},
};

}  // namespace

void status_line(int status, std::string& text) {
    auto found =
        std::find_if(std::begin(status_lines), std::end(status_lines),
                     [status](const status_entry& entry) { return entry.status == status; });
    if (found != std::end(status_lines)) text += found->line;
}

}  // namespace odata::redfish
