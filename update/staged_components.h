// Where a pushed image of each component is staged, and the task that
// flashes it.
#pragma once

namespace odata::redfish {

// Its staging file is the platform's firmware_staging_file(device).
struct staged_component {
    int device;
    const char* name;
    const char* inventory_entry;
    const char* task_name;
};

// The component of device (FW_DEVICE_BMC or FW_DEVICE_BIOS); the BMC for
// another.
const staged_component& staged_component_of(int device);

// Flashes the component's staged image in the task's worker process, which
// holds the firmware-update lock from then on; false when the worker cannot
// be started. action_uri is named in the task's closing message.
bool start_staged_flash(int task_id, const staged_component& component, const char* action_uri);

}  // namespace odata::redfish
