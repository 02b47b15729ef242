#include "update/firmware_flash.h"

#include "base/child_program.h"
#include "base/kill_point.h"
#include "platform/libfwupdate.h"

namespace odata::redfish {

bool flash_image(int device, const std::string& image, std::string& reason) {
    // A flash belongs to its task's worker: killed with it, it never runs
    // on beside the next update's flash.
    platform::child_program flash(
        {fw_update_program(), "-d", std::to_string(device), "-f", image, "-p", "1"},
        platform::child_program::lifetime::caller);
    if (!flash.started()) {
        reason = "fw_update cannot be started";
        return false;
    }
    flash.close_input();
    platform::kill_point("flash");
    std::string said;
    while (!flash.read_output(said, -1)) {
    }
    if (flash.wait() == 0) return true;
    reason = platform::last_line(said);
    if (reason.empty()) reason = "fw_update failed";
    return false;
}

}  // namespace odata::redfish
