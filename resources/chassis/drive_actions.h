// The actions of a drive in a RAID controller's enclosure,
// .../Drives/Disk.Bay.<n>/Actions/...: its locator LED (Oem
// TwrDrive.Indicate), a secure erase (Drive.SecureErase), which answers 202
// with a task that follows it, and stopping a running erase (Oem
// TwrDrive.SecureEraseAbort). The onboard SATA drives take none of them.
#pragma once

#include "resources/systems/raid_action.h"

namespace odata::redfish {

class drive_indicate : public raid_action {
public:
    explicit drive_indicate(request_context& context);
    int post(request_context& context) override;
};

class drive_secureerase : public raid_action {
public:
    explicit drive_secureerase(request_context& context);
    int post(request_context& context) override;
};

class drive_secureeraseabort : public raid_action {
public:
    explicit drive_secureeraseabort(request_context& context);
    int post(request_context& context) override;
};

}  // namespace odata::redfish
