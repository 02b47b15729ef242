// Delivery of alerts off the caller's path: each delivery runs in a
// detached process of the program bmc-alert-send (alert_send/), which
// retries as the event service's settings say, appends the outcome to
// <root>/var/log/alert_delivery.log and exits.
#pragma once

#include <string>

namespace platform::sim {

std::string alert_delivery_log_file();

// Hands request (alert_requests.h, as JSON) to a delivery process for
// entry index, waiting only until it has been started; false when it
// cannot be.
bool start_alert_delivery(int index, const char* kind, const std::string& request);

}  // namespace platform::sim
