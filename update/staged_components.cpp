#include "update/staged_components.h"

#include "platform/libfwupdate.h"
#include "update/update_job.h"

namespace odata::redfish {
namespace {

constexpr staged_component staged_components[] = {
    {FW_DEVICE_BMC, "BMC", "Staging_BMC", "BMC Update"},
    {FW_DEVICE_BIOS, "BIOS", "Staging_BIOS", "BIOS Update"},
};

}  // namespace

const staged_component& staged_component_of(int device) {
    for (const staged_component& each : staged_components)
        if (each.device == device) return each;
    return staged_components[0];
}

bool start_staged_flash(int task_id, const staged_component& component, const char* action_uri) {
    const update_job job{task_id, component.device, action_uri,
                         firmware_staging_file(component.device),
                         [](std::string&) { return true; }};
    return start_update_worker(job);
}

}  // namespace odata::redfish
