#include "platform/sim/alert_send/delivery_attempts.h"

#include <fcntl.h>
#include <unistd.h>

#include "platform/sim/alert_delivery.h"
#include "platform/sim/alert_send/alert_transports.h"
#include "platform/sim/sim_file.h"

namespace platform::sim {
namespace {

// The directory was made by the service: a delivery that outlives its BMC
// root (a removed test root) must not make it again.
void append_log_line(const std::string& line) {
    const std::string path = alert_delivery_log_file();
    unique_fd fd(::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644));
    if (fd.valid()) write_all(fd.get(), line.data(), line.size());
}

}  // namespace

unsigned delivery_seconds(const event_service_settings& settings) {
    const int attempts = settings.delivery_retry_attempts + 1;
    return static_cast<unsigned>(attempts * (alert_attempt_seconds + 5) +
                                 (attempts - 1) * settings.delivery_retry_interval_seconds);
}

bool deliver_with_retries(int index, const char* kind, const event_service_settings& settings,
                          const std::function<bool(std::string& error)>& attempt) {
    const int attempts = settings.delivery_retry_attempts + 1;
    const std::string label = "entry " + std::to_string(index) + " " + kind + ": ";
    std::string error;
    for (int n = 1; n <= attempts; ++n) {
        if (n > 1) ::sleep(static_cast<unsigned>(settings.delivery_retry_interval_seconds));
        if (attempt(error)) {
            append_log_line(label + "delivered on attempt " + std::to_string(n) + "\n");
            return true;
        }
    }
    append_log_line(label + "gave up after " + std::to_string(attempts) + " attempts: " + error +
                    "\n");
    return false;
}

}  // namespace platform::sim
