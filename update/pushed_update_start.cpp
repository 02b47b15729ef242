#include "update/pushed_update_start.h"

#include "frontend/exception_http.h"
#include "platform/libfwupdate.h"
#include "update/firmware_update_checks.h"
#include "update/push_parameters.h"
#include "update/staged_components.h"
#include "update/waiting_push.h"

namespace odata::redfish {
namespace {

// Holds the firmware-update lock until the flash's worker takes it over.
class update_lock {
public:
    explicit update_lock(const char* component) { take_firmware_update_lock(component); }
    ~update_lock() {
        if (!handed_over_) release_fw_updating_lock();
    }
    update_lock(const update_lock&) = delete;
    update_lock& operator=(const update_lock&) = delete;
    void hand_over() { handed_over_ = true; }

private:
    bool handed_over_ = false;
};

}  // namespace

TaskInfo start_pushed_update(int device, const char* action_uri, result_record errors) {
    update_lock lock(device == 0 ? "pushed" : staged_component_of(device).name);
    const std::optional<waiting_push> push = read_waiting_push();
    if (!push || (device != 0 && push->device != device)) {
        add_push_error(errors, "No pushed image waits for this target");
        throw_http_result(400, errors);
    }
    if (push->device == FW_DEVICE_BIOS)
        check_bios_host_off("TWR.1.0.OemHttppushuriErrorMessage", errors.code.c_str());
    TaskInfo task{};
    if (TaskServiceGetTaskInfo(push->task_id, &task) != 0 || !start_waiting_push(*push, action_uri))
        throw_http_error(500, "Base.1.10.InternalError");
    lock.hand_over();
    return task;
}

}  // namespace odata::redfish
