// The actions of a RAID storage member: a volume's creation
// (HA-RAID/Actions/Oem/TwrStorage.CreateVolume, MRVL.HA-RAID/.../
// TwrStorage.CreateVD), which answers 202 with a task that follows the new
// volume's initialisation; removing every volume of a controller; saving a
// controller's configuration to its flash.
#pragma once

#include "resources/systems/raid_action.h"

namespace odata::redfish {

class storage_createvolume : public raid_action {
public:
    explicit storage_createvolume(request_context& context,
                                  const char* action = "TwrStorage.CreateVolume");
    int post(request_context& context) override;
};

class storage_createvd : public storage_createvolume {
public:
    explicit storage_createvd(request_context& context);
};

class storage_clearvolumes : public raid_action {
public:
    explicit storage_clearvolumes(request_context& context);
    int post(request_context& context) override;
};

class haraidcontroller_save : public raid_action {
public:
    explicit haraidcontroller_save(request_context& context);
    int post(request_context& context) override;
};

}  // namespace odata::redfish
