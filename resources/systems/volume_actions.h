// The actions of a RAID volume, .../Volumes/Controller.<c>.Volume.<v>/
// Actions/Oem/TwrVolume.<action>: its locator LED, its deletion (Delete on
// Broadcom-class controllers, DeleteVD on Marvell-class ones; either is
// taken), the rebuild of a degraded volume onto replaced drives and the
// import of a foreign one.
#pragma once

#include "resources/systems/raid_action.h"

namespace odata::redfish {

class volume_indicate : public raid_action {
public:
    explicit volume_indicate(request_context& context);
    int post(request_context& context) override;
};

class volume_delete : public raid_action {
public:
    explicit volume_delete(request_context& context, const char* action = "TwrVolume.Delete");
    int post(request_context& context) override;
};

class volume_deletevd : public volume_delete {
public:
    explicit volume_deletevd(request_context& context);
};

class volume_rebuildvd : public raid_action {
public:
    explicit volume_rebuildvd(request_context& context);
    int post(request_context& context) override;
};

class volume_importvd : public raid_action {
public:
    explicit volume_importvd(request_context& context);
    int post(request_context& context) override;
};

}  // namespace odata::redfish
