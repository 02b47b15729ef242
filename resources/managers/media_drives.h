// The BMC's virtual media drives, named "CD1", "Floppy1", ... in URIs.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "frontend/request_context.h"

namespace odata::redfish {

struct media_drive {
    int kind;    // VMEDIA_*
    int number;  // from 1
    std::string id;
};

// Every drive, CDs first.
std::vector<media_drive> media_drives();

// The drive that a route's captures ("CD", "1") name; none when there is
// no such drive (or the number has leading zeros).
std::optional<media_drive> find_requested_drive(const request_context& context);

std::string media_drive_uri(const media_drive& drive);

}  // namespace odata::redfish
