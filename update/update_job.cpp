#include "update/update_job.h"

#include <unistd.h>

#include <cstdio>

#include "base/bmc_root.h"
#include "platform/libfwupdate.h"
#include "platform/libipmi_chassis.h"
#include "platform/libtask.h"
#include "platform/libweb.h"
#include "tasks/task_worker.h"
#include "update/firmware_flash.h"

namespace odata::redfish {
namespace {

constexpr int fetched_percent = 50;

// The BIOS-update agent takes the image at /tmp/bios_rom.
bool flash_bios(const std::string& image, std::string& reason) {
    const std::string bios_rom = platform::bmc_path("/tmp/bios_rom");
    if (image != bios_rom) {
        ::unlink(bios_rom.c_str());
        if (::symlink(image.c_str(), bios_rom.c_str()) != 0) {
            reason = "the BIOS image cannot be staged";
            return false;
        }
    }
    if (PltCHASSIS_PowerStatus() != 0) {
        reason = "the host was powered on";
        return false;
    }
    return flash_image(FW_DEVICE_BIOS, bios_rom, reason);
}

bool update(const update_job& job, std::string& reason) {
    if (!job.fetch(reason) || update_cancelled(job.task_id)) return false;
    TaskServiceUpdateTaskPercentage(job.task_id, fetched_percent);
    if (job.device == FW_DEVICE_BIOS) return flash_bios(job.image, reason);
    return flash_image(job.device, job.image, reason);
}

void end_task(const update_job& job, bool succeeded, const std::string& reason) {
    char outcome[256];
    std::snprintf(outcome, sizeof outcome, "%s, %s, %s, %s",
                  job.device == FW_DEVICE_BIOS ? "BIOS" : "BMC", job.action_uri,
                  succeeded ? "the new firmware is running" : reason.c_str(),
                  succeeded ? "successfully" : "unsuccessfully");
    TaskMessage message{};
    TaskServiceEventMessage(succeeded ? "FirmwareUpdateCompleted" : "FirmwareUpdateFailed", outcome,
                            &message);
    if (succeeded) TaskServiceUpdateTaskPercentage(job.task_id, 100);
    TaskServiceAddTaskMessage(job.task_id, &message);
    TaskServiceUpdateTaskETime(job.task_id);
    TaskServiceUpdateTaskState(job.task_id,
                               succeeded ? TASK_STATE_COMPLETED : TASK_STATE_EXCEPTION);
}

}  // namespace

bool update_cancelled(int task_id) {
    TaskInfo task{};
    return TaskServiceGetTaskInfo(task_id, &task) == 0 && task.state == TASK_STATE_KILLED;
}

void run_update_job(const update_job& job) {
    TaskServiceUpdateTaskState(job.task_id, TASK_STATE_RUNNING);
    std::string reason;
    const bool succeeded = update(job, reason);
    // Freed before the task shows its end: a client that sees the end may
    // start the next update at once.
    release_fw_updating_lock();
    if (!update_cancelled(job.task_id)) {
        end_task(job, succeeded, reason);
        console_log("[FirmwareUpdate] task %d: %s\n", job.task_id,
                    succeeded ? "completed" : reason.c_str());
    }
}

bool start_update_worker(const update_job& job) {
    return start_task_worker(
        job.task_id, [](pid_t worker) { set_fw_updating_lock_holder(worker); },
        [&job] { run_update_job(job); });
}

}  // namespace odata::redfish
