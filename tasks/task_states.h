// The task states of the task store: their TaskState texts and what the
// task monitor answers in each.
#pragma once

#include <string_view>

namespace odata::redfish {

// The TaskState text of a state number; "Unknown" for any number outside
// the table.
std::string_view task_state_text(int state);

// Completed, Killed and Exception tasks show their EndTime.
bool task_shows_end_time(int state);

// The status the task monitor answers with: 202 while the task goes on,
// 200 when completed, 400 for an exception, 500 otherwise.
int task_monitor_status(int state);

}  // namespace odata::redfish
