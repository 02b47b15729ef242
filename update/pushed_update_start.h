// Starts flashing the image that a push left waiting, for StartUpdate and
// the OEM Install.
#pragma once

#include "frontend/message.h"
#include "platform/libtask.h"

namespace odata::redfish {

// Takes the firmware-update lock (400 OemFirmwareAlreadyInUpdateMode while
// another update holds it) and flashes the waiting image of device (0: the
// one that waits) in its task. Throws 400 with errors when no such image
// waits or a BIOS image meets a powered host. Answers the task.
TaskInfo start_pushed_update(int device, const char* action_uri, result_record errors);

}  // namespace odata::redfish
