#include "platform/sim/alert_send/delivery_attempts.h"

#include <unistd.h>

#include "platform/sim/alert_delivery.h"
#include "platform/sim/alert_send/alert_transports.h"

namespace platform::sim {

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
            append_delivery_log(label + "delivered on attempt " + std::to_string(n) + "\n");
            return true;
        }
    }
    append_delivery_log(label + "gave up after " + std::to_string(attempts) +
                        " attempts: " + error + "\n");
    return false;
}

}  // namespace platform::sim
