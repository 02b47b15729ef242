// Where a pushed image of each component is staged, and the task that
// flashes it.
#pragma once

#include <vector>

namespace odata::redfish {

// Its staging file is the platform's firmware_staging_file(device).
struct staged_component {
    int device;
    const char* name;             // in messages, the event log and update mode
    const char* inventory_entry;  // of the staged image's version
    const char* task_name;
    const char* target_uri;  // of a push; null when it takes none
    // The console line (with the function and line) when it cannot enter
    // update mode; null for the generic one.
    const char* update_mode_failure;
};

const std::vector<staged_component>& staged_components();

// The component of device; the BMC for another.
const staged_component& staged_component_of(int device);

// Flashes the component's staged image in the task's worker process, which
// holds the firmware-update lock and update mode from then on; false when
// it cannot be started (update mode held by another, or no worker). The
// task must hold the lock or this process must. action_uri is named in the
// task's closing message.
bool start_staged_flash(int task_id, const staged_component& component, const char* action_uri);

}  // namespace odata::redfish
