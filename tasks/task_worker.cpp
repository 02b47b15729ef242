#include "tasks/task_worker.h"

#include <fcntl.h>
#include <unistd.h>

#include "platform/libtask.h"
#include "platform/libweb.h"
#include "tasks/child_exit.h"

namespace odata::redfish {
namespace {

// Keeps standard error (the web server's log) and nothing of the request:
// the FastCGI socket must close when the service finishes the request.
void detach_descriptors() {
    const int null = ::open("/dev/null", O_RDWR);
    if (null >= 0) {
        ::dup2(null, 0);
        ::dup2(null, 1);
    }
    ::close_range(3, ~0U, 0);
}

}  // namespace

bool start_task_worker(int task_id, const std::function<void()>& work) {
    const pid_t intermediate = ::fork();
    if (intermediate < 0) return false;
    if (intermediate == 0) {
        ::setsid();
        detach_descriptors();
        // The worker starts once it is named: the go byte.
        int go[2];
        if (::pipe(go) != 0) ::_exit(1);
        const pid_t worker = ::fork();
        if (worker == 0) {
            ::close(go[1]);
            char byte = 0;
            if (::read(go[0], &byte, 1) == 1) work();
            ::_exit(0);
        }
        ::close(go[0]);
        if (worker < 0 || TaskServiceSetTaskWorker(task_id, worker) != 0) ::_exit(1);
        ::_exit(::write(go[1], "g", 1) == 1 ? 0 : 1);
    }
    if (wait_for_exit(intermediate) == 0) return true;
    console_log("[Task] cannot start the worker of task %d\n", task_id);
    return false;
}

}  // namespace odata::redfish
