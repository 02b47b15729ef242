// bmc-image-fetch IMAGE: downloads a firmware image into IMAGE for the
// update service's task worker. Standard input brings the source as one
// line of JSON ({"url", "username", "password"}): credentials never go on
// the command line. Exits 0 once the image is complete and synced;
// otherwise says why on standard error and exits 1. The end of standard
// input (the worker gone or cancelling) ends the download.
#include <poll.h>
#include <unistd.h>

#include <boost/json.hpp>
#include <cerrno>
#include <cstdio>

#include "update/image_fetch/image_transfer.h"

namespace {

using odata::redfish::image_source;

constexpr size_t max_request_bytes = 64 * 1024;

bool read_request_line(std::string& line) {
    char buffer[4096];
    while (line.find('\n') == std::string::npos && line.size() < max_request_bytes) {
        const ssize_t got = ::read(0, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        line.append(buffer, static_cast<size_t>(got));
    }
    return line.find('\n') != std::string::npos;
}

// Nothing more comes after the request: input that is readable again has
// ended.
bool input_ended() {
    pollfd input{0, POLLIN, 0};
    return ::poll(&input, 1, 0) > 0;
}

int fail(const char* reason) {
    std::fprintf(stderr, "%s\n", reason);
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return fail("usage: bmc-image-fetch IMAGE < source");
    std::string line;
    if (!read_request_line(line)) return fail("the download was not requested");
    boost::system::error_code error;
    const boost::json::value request = boost::json::parse(line, error);
    const auto source = boost::json::try_value_to<image_source>(request);
    if (error || !source) return fail("the download was not requested");
    std::string reason;
    if (odata::redfish::transfer_image(source.value(), argv[1], input_ended, reason)) return 0;
    return fail(reason.c_str());
}
