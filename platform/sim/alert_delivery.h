// Delivery of alerts off the caller's path: each delivery runs in a
// detached process of the program bmc-alert-send (alert_send/), which
// retries as the event service's settings say, appends the outcome to
// <root>/var/log/alert_delivery.log and exits.
#pragma once

#include <string>
#include <vector>

namespace platform::sim {

std::string alert_delivery_log_file();

// Starts command with input on its standard input, waiting only until it
// has been started and handed the input; false when it cannot be.
bool start_detached(const std::vector<std::string>& command, const std::string& input);

// Hands request (alert_requests.h, as JSON) to a delivery process for
// entry index, waiting only until it has been started; false when it
// cannot be.
bool start_alert_delivery(int index, const char* kind, const std::string& request);

}  // namespace platform::sim
