#include "update/staged_components.h"

#include "base/bmc_root.h"
#include "platform/libfwupdate.h"
#include "update/update_job.h"

namespace odata::redfish {
namespace {

constexpr staged_component staged_components[] = {
    {FW_DEVICE_BMC, "BMC", "/tmp/fwimgbuff", "Staging_BMC", "BMC Update"},
    {FW_DEVICE_BIOS, "BIOS", "/tmp/bios_rom", "Staging_BIOS", "BIOS Update"},
};

}  // namespace

const staged_component& staged_component_of(int device) {
    for (const staged_component& each : staged_components)
        if (each.device == device) return each;
    return staged_components[0];
}

bool start_staged_flash(int task_id, const staged_component& component, const char* action_uri) {
    const update_job job{task_id, component.device, action_uri,
                         platform::bmc_path(component.staging_file),
                         [](std::string&) { return true; }};
    return start_update_worker(job);
}

}  // namespace odata::redfish
