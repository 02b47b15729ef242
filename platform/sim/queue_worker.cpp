#include "platform/sim/queue_worker.h"

#include <fcntl.h>
#include <unistd.h>

namespace platform::sim {

void detach_descriptors() {
    const int null = ::open("/dev/null", O_RDWR);
    for (int fd = 0; fd <= 2; ++fd)
        if (null >= 0) ::dup2(null, fd);
    ::close_range(3, ~0U, 0);
}

void start_afresh(const char* program) {
    ::alarm(0);
    char* const arguments[] = {const_cast<char*>(program), nullptr};
    ::execv(program, arguments);
    ::_exit(1);
}

void work_queue(spool_slot& slot, const std::function<bool()>& handle_next,
                const std::function<bool()>& queued, const char* program) {
    int handled = 0;
    for (int pass = 0; pass < max_worker_passes; ++pass) {
        if (!slot.take()) return;
        while (handled < max_worker_records && handle_next()) ++handled;
        slot.release();
        if (handled == max_worker_records) start_afresh(program);
        if (!queued()) return;
    }
}

}  // namespace platform::sim
