// What the simulated task store tells the other simulated libraries.
#pragma once

#include <string>

namespace platform::sim {

// True while the task (its id and monitor id, which tell it from a later
// task in its place) has not ended, or the process that worked on it has
// not yet gone.
bool task_in_progress(int task_id, const std::string& monitor_id);

}  // namespace platform::sim
