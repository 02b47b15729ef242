// The host's storage subsystems, /redfish/v1/Systems/1/Storage: the onboard
// SATA controller, member "SATAEmbedded", and the drives in its bays; the
// RAID controllers of each family (raid_paths.h) with their drives and
// volumes.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class storagecollection : public redfish {
public:
    explicit storagecollection(request_context& context);
    int get(request_context& context) override;
};

struct raid_family;

class storage : public redfish {
public:
    explicit storage(request_context& context);
    int get(request_context& context) override;

private:
    // raid_storage.cpp
    void set_raid_storage(const raid_family& family);
};

}  // namespace odata::redfish
