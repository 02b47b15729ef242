// The work of a firmware update, done by the task's worker process: fetch
// the image (a download, or nothing for a pushed one), flash it, end the
// task.
#pragma once

#include <functional>
#include <string>

namespace odata::redfish {

struct update_job {
    int task_id;
    int device;              // FW_DEVICE_BMC or FW_DEVICE_BIOS
    const char* action_uri;  // named in the task's closing message
    std::string image;       // the device's staging file
    // Brings the image to its place; on failure, reason says why.
    std::function<bool(std::string& reason)> fetch;
};

// True once the task has been cancelled.
bool update_cancelled(int task_id);

// Ends the task as Completed or Exception, removes the image and releases
// the firmware-update lock; leaves a task that was cancelled meanwhile as
// it is.
void run_update_job(const update_job& job);

// Hands the firmware-update lock, held by this process, to the task and
// runs the job in the task's worker process; false when it cannot be
// started.
bool start_update_worker(const update_job& job);

}  // namespace odata::redfish
