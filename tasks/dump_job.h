// Generating a dump as a task: the action answers 202 with the task
// monitor, the task's worker process has the platform collect the dump.
#pragma once

namespace odata::redfish {

// Starts the generation of the platform's dump kind and answers 202
// Accepted. While a dump of that kind is being generated: 503
// OemEvidenceDumpErrorMessage, and no task is left running; 500 when no
// task can be started.
void start_dump_task(int kind, const char* task_name, const char* operation);

}  // namespace odata::redfish
