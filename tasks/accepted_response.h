// How an action hands its work to a task: it registers the task and answers
// 202 Accepted with the task monitor.
#pragma once

#include <optional>

#include "platform/libtask.h"

namespace odata::redfish {

// Registers a task named name and reads it back; logs "[ERROR] <operation>
// Create Task Service" and gives nothing when the store cannot.
std::optional<TaskInfo> create_task(const char* name, const char* operation);

// "Status: 202 Accepted" with Location (the task monitor), Retry-After and
// the accepted body naming the task.
void answer_accepted(const TaskInfo& task);

}  // namespace odata::redfish
