// Pulls a firmware image from a server into a private file. The download
// runs in the program bmc-image-fetch (update/image_fetch/), so that the
// service itself links no network client library.
#pragma once

#include <boost/describe/class.hpp>
#include <functional>
#include <string>

namespace odata::redfish {

struct image_source {
    std::string url;       // "http://host/path", "https://...", "ftp://..."
    std::string username;  // "" when the server takes no credentials
    std::string password;
    long deadline_seconds;  // the whole download ends after this
};
// The program reads it as JSON from its standard input.
BOOST_DESCRIBE_STRUCT(image_source, (), (url, username, password, deadline_seconds))

// Images larger than this are refused.
inline constexpr long long max_image_bytes = 128LL << 20;
// A server that has sent no image data this long after the download began
// has its download ended; pauses after the first data are borne.
inline constexpr long stall_limit_seconds = 2;

// Downloads into path (put in place once whole, mode 0600). Ends when the
// server stalls, the deadline passes, the image grows too large, or stop()
// says so. On failure, reason says why and path is as it was.
bool download_image(const image_source& source, const std::string& path,
                    const std::function<bool()>& stop, std::string& reason);

}  // namespace odata::redfish
