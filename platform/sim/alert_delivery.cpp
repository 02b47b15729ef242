#include "platform/sim/alert_delivery.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

#include "platform/alert_settings.h"
#include "platform/bmc_root.h"
#include "platform/libweb.h"
#include "platform/sim/alert_transports.h"
#include "platform/sim/sim_file.h"

namespace platform::sim {
namespace {

// The directory is made before the fork: a delivery that outlives its BMC
// root (a removed test root) must not make it again.
void append_log_line(const std::string& line) {
    const std::string path = alert_delivery_log_file();
    unique_fd fd(::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644));
    if (fd.valid()) write_all(fd.get(), line.data(), line.size());
}

// The caller's descriptors (its client connection above all) must not stay
// open while a slow receiver is retried.
void detach_descriptors() {
    const int null = ::open("/dev/null", O_RDWR);
    for (int fd = 0; fd <= 2; ++fd)
        if (null >= 0) ::dup2(null, fd);
    ::close_range(3, ~0U, 0);
}

[[noreturn]] void deliver(int index, const char* kind,
                          const std::function<bool(std::string& error)>& attempt) {
    const event_service_settings settings = read_event_service_settings();
    const int attempts = settings.delivery_retry_attempts + 1;
    // A hard stop even if a transport ignores its own timeouts.
    ::alarm(static_cast<unsigned>(attempts * (alert_attempt_seconds + 5) +
                                  (attempts - 1) * settings.delivery_retry_interval_seconds));
    const std::string label = "entry " + std::to_string(index) + " " + kind + ": ";
    std::string error;
    for (int n = 1; n <= attempts; ++n) {
        if (n > 1) ::sleep(static_cast<unsigned>(settings.delivery_retry_interval_seconds));
        if (attempt(error)) {
            append_log_line(label + "delivered on attempt " + std::to_string(n) + "\n");
            ::_exit(0);
        }
    }
    append_log_line(label + "gave up after " + std::to_string(attempts) + " attempts: " + error +
                    "\n");
    ::_exit(1);
}

}  // namespace

std::string alert_delivery_log_file() { return bmc_path("/var/log/alert_delivery.log"); }

bool start_alert_delivery(int index, const char* kind,
                          const std::function<bool(std::string& error)>& attempt) {
    make_parent_dirs(alert_delivery_log_file());
    const pid_t child = ::fork();
    if (child < 0) {
        console_log("[ERROR] alert delivery: fork: %s\n", std::strerror(errno));
        return false;
    }
    if (child == 0) {
        // The middle process exits at once, so the deliverer is nobody's
        // child to wait for.
        ::setsid();
        ::signal(SIGPIPE, SIG_IGN);
        if (::fork() == 0) {
            ::signal(SIGALRM, SIG_DFL);
            detach_descriptors();
            deliver(index, kind, attempt);
        }
        ::_exit(0);
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace platform::sim
