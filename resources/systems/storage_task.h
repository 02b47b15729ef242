// A long operation of a storage controller (a volume's initialisation, a
// drive's secure erase) followed by a task: the action answers 202 with the
// task monitor, and a worker process mirrors the controller's progress
// into the task until the operation ends.
#pragma once

#include <functional>

namespace odata::redfish {

struct storage_operation {
    const char* task_name;  // "Volume Create"
    const char* operation;  // logged when no task can be made: "VolumeCreate"
    const char* subject;    // the URI of what the controller works on
    // The controller's progress: 0..100, or negative once the operation
    // no longer runs (aborted, or its volume deleted).
    std::function<int()> progress;
};

// Creates the task, then has the controller start the operation (start
// answers a PLT_* code) and answers 202. Nothing starts when no task can be
// made: 500. A refused start ends the task and is returned for the caller
// to answer. A worker that cannot start leaves the controller's operation
// running and answers 500.
int answer_with_task(const storage_operation& operation, const std::function<int()>& start);

}  // namespace odata::redfish
