// A pushed image staged until UpdateService.StartUpdate (or the OEM
// Install) starts flashing it, and its Pending task. Read and changed only
// by the holder of the firmware-update lock.
#pragma once

#include <optional>

namespace odata::redfish {

struct waiting_push {
    int task_id;
    int device;  // FW_DEVICE_BMC or FW_DEVICE_BIOS
};

// Records push as the one waiting, dropping any that waited before. The
// push waits once its task, still worked on by this process, goes Pending:
// killed before, the task ends and nothing waits.
bool store_waiting_push(const waiting_push& push);

// Forgets the waiting push of device (0: of any device), which another
// update takes the place of, removes its staged image and ends its task as
// Killed.
void drop_waiting_push(int device);

// The waiting push, while its task is still Pending (not cancelled).
std::optional<waiting_push> read_waiting_push();

// Flashes the waiting push's staged image in its task's worker, which holds
// the firmware-update lock from then on, and forgets the record; false when
// the worker cannot be started.
bool start_waiting_push(const waiting_push& push, const char* action_uri);

}  // namespace odata::redfish
