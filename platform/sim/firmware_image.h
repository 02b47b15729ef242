// The simulated firmware image format: one header line
//   "TWRFW1 <component> <version> <payload bytes> <payload SHA-256 in hex>\n"
// followed by the payload.
#pragma once

#include <string>

namespace platform::sim {

struct firmware_image_header {
    std::string component;  // "BMC", "BIOS", "CPLD"
    std::string version;
    unsigned long long payload_size = 0;
    std::string payload_digest;
};

// The whole image for a payload.
std::string make_firmware_image(const std::string& component, const std::string& version,
                                const std::string& payload);

// Checks the image in path: a well-formed header for the component and a
// payload of its size and digest. On failure, reason says why.
bool check_firmware_image(const std::string& path, const std::string& component,
                          firmware_image_header& header, std::string& reason);

}  // namespace platform::sim
