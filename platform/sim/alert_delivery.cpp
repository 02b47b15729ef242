#include "platform/sim/alert_delivery.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "base/bmc_root.h"
#include "base/child_program.h"
#include "platform/libweb.h"
#include "platform/sim/sim_file.h"

namespace platform::sim {
namespace {

// Runs in a process of its own that exits as soon as the request is
// handed over: the delivery process is then nobody's child to wait for,
// and the caller never waits for the program to load.
[[noreturn]] void hand_over(int index, const char* kind, const std::string& request) {
    child_program sender({bmc_path("/usr/sbin/bmc-alert-send"), kind, std::to_string(index)});
    if (!sender.started())
        console_log("[ERROR] alert delivery: bmc-alert-send cannot be started\n");
    // _exit leaves the sender running, its input ended.
    ::_exit(sender.started() && sender.send(request) ? 0 : 1);
}

}  // namespace

std::string alert_delivery_log_file() { return bmc_path("/var/log/alert_delivery.log"); }

bool start_alert_delivery(int index, const char* kind, const std::string& request) {
    make_parent_dirs(alert_delivery_log_file());
    const pid_t handover = ::fork();
    if (handover < 0) {
        console_log("[ERROR] alert delivery: fork: %s\n", std::strerror(errno));
        return false;
    }
    if (handover == 0) hand_over(index, kind, request);
    int status = 0;
    while (::waitpid(handover, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace platform::sim
