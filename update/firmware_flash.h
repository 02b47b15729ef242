// Flashes an image with the platform's fw_update program.
#pragma once

#include <string>

namespace odata::redfish {

// Runs "fw_update -d device -f image -p 1" (an argument vector, no shell)
// and waits for it; on failure, reason holds what it said. The program
// ends with the calling process.
bool flash_image(int device, const std::string& image, std::string& reason);

}  // namespace odata::redfish
