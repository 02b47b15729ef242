#include "platform/sim/alert_delivery.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/bmc_root.h"
#include "platform/child_program.h"
#include "platform/libweb.h"
#include "platform/sim/alert_queue.h"
#include "platform/sim/sim_file.h"

namespace platform::sim {
namespace {

// Runs in a process of its own that exits as soon as the sender has
// started: the sender is then nobody's child to wait for, and the caller
// never waits for the program to load.
[[noreturn]] void hand_over() {
    child_program sender({bmc_path("/usr/sbin/bmc-alert-send")});
    if (!sender.started())
        console_log("[ERROR] alert delivery: bmc-alert-send cannot be started\n");
    // _exit leaves the sender running, its input ended.
    ::_exit(sender.started() ? 0 : 1);
}

void start_sender() {
    const pid_t handover = ::fork();
    if (handover < 0) {
        console_log("[ERROR] alert delivery: fork: %s\n", std::strerror(errno));
        return;
    }
    if (handover == 0) hand_over();
    int status = 0;
    while (::waitpid(handover, &status, 0) < 0 && errno == EINTR) {
    }
}

}  // namespace

std::string alert_delivery_log_file() { return bmc_path("/var/log/alert_delivery.log"); }

// The directory was made when the alert was queued: a sender that outlives
// its BMC root (a removed test root) must not make it again.
void append_delivery_log(const std::string& line) {
    const std::string path = alert_delivery_log_file();
    unique_fd fd(::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644));
    if (fd.valid()) write_all(fd.get(), line.data(), line.size());
}

bool start_alert_delivery(int index, const char* kind, const std::string& request) {
    make_parent_dirs(alert_delivery_log_file());
    if (!enqueue_alert({index, kind, request})) {
        console_log("[ERROR] alert delivery: the alert cannot be queued\n");
        return false;
    }
    // A busy sender takes the alert when it is done with its own; one that
    // is just leaving looks at the queue once more after freeing its slot.
    if (sender_slot_free()) start_sender();
    return true;
}

}  // namespace platform::sim
