// The volumes of a storage member, .../Storage/<id>/Volumes: those of the
// RAID controllers (see raid_paths.h); the onboard SATA controller makes
// none.
#pragma once

#include <optional>

#include "framework/redfish.h"
#include "platform/libraid.h"
#include "resources/systems/raid_paths.h"

namespace odata::redfish {

class volumecollection : public redfish {
public:
    explicit volumecollection(request_context& context);
    int get(request_context& context) override;
};

class volume : public redfish {
public:
    explicit volume(request_context& context);
    int get(request_context& context) override;
};

// The volume a path names or leads with; 404 ResourceNotFound when the
// controller or the volume does not exist.
struct found_volume {
    raid_volume_ref ref;
    St_RaidVolume info;
};
found_volume volume_of_request(const request_context& context);

// The URIs of every volume of a family's controllers.
std::vector<std::string> raid_volume_uris(const raid_family& family);

}  // namespace odata::redfish
