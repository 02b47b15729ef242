// Delivery of alerts off the caller's path: each delivery runs in a
// detached process (double fork, its own session, no inherited descriptors)
// that retries as the event service's settings say and then exits. Outcomes
// are appended to <root>/var/log/alert_delivery.log:
//   "entry <n> <kind>: delivered on attempt <k>" or
//   "entry <n> <kind>: gave up after <k> attempts: <reason>".
#pragma once

#include <functional>
#include <string>

namespace platform::sim {

std::string alert_delivery_log_file();

// Starts attempt in a detached process; false when it cannot be started.
// attempt runs at most retry attempts + 1 times, apart by the retry interval.
bool start_alert_delivery(int index, const char* kind,
                          const std::function<bool(std::string& error)>& attempt);

}  // namespace platform::sim
