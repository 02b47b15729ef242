#include "resources/managers/media_drives.h"

#include "platform/libvmedia.h"
#include "resources/managers/manager_uris.h"

namespace odata::redfish {
namespace {

struct drive_kind {
    int kind;
    const char* name;
};

constexpr drive_kind kinds[] = {{VMEDIA_CD, "CD"}, {VMEDIA_FLOPPY, "Floppy"}};

media_drive make_drive(const drive_kind& kind, int number) {
    return {kind.kind, number, kind.name + std::to_string(number)};
}

}  // namespace

std::vector<media_drive> media_drives() {
    std::vector<media_drive> drives;
    for (const drive_kind& kind : kinds)
        for (int number = 1; number <= PltVMEDIA_DriveCount(kind.kind); ++number)
            drives.push_back(make_drive(kind, number));
    return drives;
}

std::optional<media_drive> find_requested_drive(const request_context& context) {
    const int number = context.capture_number(1);
    if (context.captures.size() != 2 || number < 1 || context.captures[1] != std::to_string(number))
        return std::nullopt;
    for (const drive_kind& kind : kinds)
        if (context.captures[0] == kind.name && number <= PltVMEDIA_DriveCount(kind.kind))
            return make_drive(kind, number);
    return std::nullopt;
}

std::string media_drive_uri(const media_drive& drive) {
    return std::string(manager_virtual_media_uri) + "/" + drive.id;
}

}  // namespace odata::redfish
