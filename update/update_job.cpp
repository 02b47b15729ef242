#include "update/update_job.h"

#include <unistd.h>

#include <cstdio>
#include <string>

#include "platform/libfwupdate.h"
#include "platform/libipmi.h"
#include "platform/libipmi_chassis.h"
#include "platform/libtask.h"
#include "platform/libweb.h"
#include "tasks/task_worker.h"
#include "update/firmware_flash.h"
#include "update/staged_components.h"

namespace odata::redfish {
namespace {

constexpr int fetched_percent = 50;
constexpr int event_firmware_update = 152;

const char* target_of(const update_job& job) { return staged_component_of(job.device).name; }

void log_update_event(const std::string& text) {
    LibSaveSysEvtLog(event_firmware_update, 0, text.c_str());
}

// The task's closing message, which the event log repeats.
std::string outcome_of(const update_job& job, bool succeeded, const std::string& reason) {
    char outcome[256];
    std::snprintf(outcome, sizeof outcome, "%s, %s, %s, %s", target_of(job), job.action_uri,
                  succeeded ? "the new firmware is running" : reason.c_str(),
                  succeeded ? "successfully" : "unsuccessfully");
    return outcome;
}

bool flash(const update_job& job, std::string& reason) {
    if (job.device == FW_DEVICE_BIOS && PltCHASSIS_PowerStatus() != 0) {
        reason = "the host was powered on";
        return false;
    }
    return flash_image(job.device, job.image, reason);
}

bool update(const update_job& job, std::string& reason) {
    if (!job.fetch(reason)) return false;
    if (update_cancelled(job.task_id)) {
        reason = "the update was cancelled";
        return false;
    }
    TaskServiceUpdateTaskPercentage(job.task_id, fetched_percent);
    return flash(job, reason);
}

void end_task(const update_job& job, bool succeeded, const std::string& outcome) {
    TaskMessage message{};
    TaskServiceEventMessage(succeeded ? "FirmwareUpdateCompleted" : "FirmwareUpdateFailed",
                            outcome.c_str(), &message);
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
    log_update_event(std::string(target_of(job)) + ", " + job.action_uri + ", started");
    std::string reason;
    const bool succeeded = update(job, reason);
    const std::string outcome = outcome_of(job, succeeded, reason);
    log_update_event(outcome);
    // Flashed or refused, the image has served: the next update stages its
    // own.
    ::unlink(job.image.c_str());
    leave_fw_update_mode(job.task_id);
    // Freed before the task shows its end: a client that sees the end may
    // start the next update at once.
    release_fw_updating_lock();
    if (!update_cancelled(job.task_id)) {
        end_task(job, succeeded, outcome);
        console_log("[FirmwareUpdate] task %d: %s\n", job.task_id,
                    succeeded ? "completed" : reason.c_str());
    }
}

bool start_update_worker(const update_job& job) {
    // The task holds the lock from now on. Until its worker runs, this
    // process works on it: killed meanwhile, the task ends and the lock
    // frees.
    if (TaskServiceSetTaskWorker(job.task_id, ::getpid()) != 0 ||
        TaskServiceUpdateTaskState(job.task_id, TASK_STATE_STARTING) != 0 ||
        set_fw_updating_lock_task(job.task_id) != 0)
        return false;
    return start_task_worker(job.task_id, [&job] { run_update_job(job); });
}

}  // namespace odata::redfish
