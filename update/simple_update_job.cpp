#include "update/simple_update_job.h"

#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "platform/bmc_root.h"
#include "platform/libfwupdate.h"
#include "platform/libipmi_chassis.h"
#include "platform/libtask.h"
#include "platform/libweb.h"
#include "update/firmware_flash.h"
#include "update/image_download.h"
#include "update/update_uris.h"

namespace odata::redfish {
namespace {

constexpr int downloaded_percent = 50;

bool task_cancelled(int task_id) {
    TaskInfo task{};
    return TaskServiceGetTaskInfo(task_id, &task) == 0 && task.state == TASK_STATE_KILLED;
}

// The BIOS-update agent takes the image at /tmp/bios_rom.
bool flash_bios(const std::string& image, std::string& reason) {
    const std::string bios_rom = platform::bmc_path("/tmp/bios_rom");
    ::unlink(bios_rom.c_str());
    if (::symlink(image.c_str(), bios_rom.c_str()) != 0) {
        reason = "the BIOS image cannot be staged";
        return false;
    }
    if (PltCHASSIS_PowerStatus() != 0) {
        reason = "the host was powered on";
        return false;
    }
    return flash_image(FW_DEVICE_BIOS, bios_rom, reason);
}

bool update(int task_id, const simple_update_request& request, std::string& reason) {
    const std::string image = platform::bmc_path("/tmp/fwimgbuff");
    ::unlink(platform::bmc_path("/tmp/bios_rom").c_str());
    const image_source source{request.url(), request.username, request.password};
    if (!download_image(
            source, image, [task_id] { return task_cancelled(task_id); }, reason))
        return false;
    if (task_cancelled(task_id)) return false;
    TaskServiceUpdateTaskPercentage(task_id, downloaded_percent);
    if (request.device == FW_DEVICE_BIOS) return flash_bios(image, reason);
    return flash_image(request.device, image, reason);
}

void end_task(int task_id, int device, bool succeeded, const std::string& reason) {
    TaskMessage message{};
    std::snprintf(message.message, sizeof message.message, "%s, %s, %s, %s",
                  device == FW_DEVICE_BIOS ? "BIOS" : "BMC", simple_update_uri,
                  succeeded ? "the new firmware is running" : reason.c_str(),
                  succeeded ? "successfully" : "unsuccessfully");
    std::snprintf(message.message_id, sizeof message.message_id, "%s",
                  succeeded ? "TaskEvent.1.0.TaskCompletedOK" : "TaskEvent.1.0.TaskAborted");
    std::snprintf(message.severity, sizeof message.severity, "%s", succeeded ? "OK" : "Critical");
    if (succeeded) TaskServiceUpdateTaskPercentage(task_id, 100);
    TaskServiceAddTaskMessage(task_id, &message);
    TaskServiceUpdateTaskETime(task_id);
    TaskServiceUpdateTaskState(task_id, succeeded ? TASK_STATE_COMPLETED : TASK_STATE_EXCEPTION);
}

}  // namespace

void run_simple_update(int task_id, const simple_update_request& request) {
    TaskServiceUpdateTaskState(task_id, TASK_STATE_RUNNING);
    std::string reason;
    const bool succeeded = update(task_id, request, reason);
    if (!task_cancelled(task_id)) {
        end_task(task_id, request.device, succeeded, reason);
        console_log("[SimpleUpdate] task %d: %s\n", task_id,
                    succeeded ? "completed" : reason.c_str());
    }
    release_fw_updating_lock();
}

}  // namespace odata::redfish
