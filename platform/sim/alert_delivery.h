// Delivery of alerts off the caller's path: each alert joins the delivery
// queue (alert_queue.h), and a detached process of the program
// bmc-alert-send (alert_send/) takes it from there, retries as the event
// service's settings say, appends the outcome to
// <root>/var/log/alert_delivery.log (a bounded log, bounded_log.h) and goes
// on with the next.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/sim/bounded_log.h"

namespace platform::sim {

constexpr std::size_t max_delivery_log_bytes = 64 * 1024;

bounded_log alert_delivery_log();

// Appends one line to the delivery log.
void append_delivery_log(const std::string& line);

// Starts command with input on its standard input, waiting only until it
// has been started and handed the input; false when it cannot be.
bool start_detached(const std::vector<std::string>& command, const std::string& input);

// Queues request (alert_requests.h, as JSON) for entry index and starts a
// sender when a slot is free, waiting only until it has been started;
// false when the request cannot be queued.
bool start_alert_delivery(int index, const char* kind, const std::string& request);

}  // namespace platform::sim
