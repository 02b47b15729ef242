// The download itself, with libcurl, inside bmc-image-fetch.
#pragma once

#include <functional>
#include <string>

#include "update/image_download.h"

namespace odata::redfish {

// As download_image, in this process.
bool transfer_image(const image_source& source, const std::string& path,
                    const std::function<bool()>& stop, std::string& reason);

}  // namespace odata::redfish
