// The work of a SimpleUpdate, done by the task's worker process: download
// the image, flash it, end the task.
#pragma once

#include "update/simpleupdate_request.h"

namespace odata::redfish {

// Ends the task as Completed or Exception and releases the firmware-update
// lock; leaves a task that was cancelled meanwhile as it is.
void run_simple_update(int task_id, const simple_update_request& request);

}  // namespace odata::redfish
