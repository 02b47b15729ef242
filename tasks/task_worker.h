// Runs the work of a task in a detached process.
//
// A process rather than a thread: the work (downloads, flashing) outlives
// the request and must not hold up this process's accept loop; the web
// server may end or restart service processes at any time, which would
// take a thread down with them; and the task store can watch a process by
// its id, so a worker that dies ends its task as Exception instead of
// leaving it Running.
#pragma once

#include <functional>

namespace odata::redfish {

// Forks the worker (re-parented to init, in a session of its own, with no
// descriptor of the request), names it the task's worker, and returns
// once that is done. The worker runs work and exits. False when no process
// could be started.
bool start_task_worker(int task_id, const std::function<void()>& work);

}  // namespace odata::redfish
