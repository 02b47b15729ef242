#include "platform/sim/alert_delivery.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "base/bmc_root.h"
#include "base/child_program.h"
#include "platform/libweb.h"
#include "platform/sim/alert_queue.h"
#include "platform/sim/sim_file.h"

namespace platform::sim {
namespace {

// Runs in a process of its own that exits as soon as the input is handed
// over: the program is then nobody's child to wait for, and the caller
// never waits for it to load.
[[noreturn]] void hand_over(const std::vector<std::string>& command, const std::string& input) {
    child_program program(command);
    if (!program.started()) console_log("[ERROR] %s cannot be started\n", command[0].c_str());
    // _exit leaves the program running, its input ended.
    ::_exit(program.started() && program.send(input) ? 0 : 1);
}

}  // namespace

bool start_detached(const std::vector<std::string>& command, const std::string& input) {
    const pid_t handover = ::fork();
    if (handover < 0) {
        console_log("[ERROR] %s: fork: %s\n", command[0].c_str(), std::strerror(errno));
        return false;
    }
    if (handover == 0) hand_over(command, input);
    int status = 0;
    while (::waitpid(handover, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bounded_log alert_delivery_log() {
    return {bmc_path("/var/log/alert_delivery.log"), max_delivery_log_bytes, 0644};
}

// The directory was made when the alert was queued: a sender that outlives
// its BMC root (a removed test root) must not make it again.
void append_delivery_log(const std::string& line) { append_line(alert_delivery_log(), line); }

bool start_alert_delivery(int index, const char* kind, const std::string& request) {
    make_parent_dirs(alert_delivery_log().path);
    if (!enqueue_alert({index, kind, request})) {
        console_log("[ERROR] alert delivery: the alert cannot be queued\n");
        return false;
    }
    // A busy sender takes the alert when it is done with its own; one that
    // is just leaving looks at the queue once more after freeing its slot.
    if (sender_slot_free()) start_detached({bmc_path("/usr/sbin/bmc-alert-send")}, "");
    return true;
}

}  // namespace platform::sim
