// The tries of one delivery and the line that records their outcome in
// <root>/var/log/alert_delivery.log:
//   "entry <n> <kind>: delivered on attempt <k>" or
//   "entry <n> <kind>: gave up after <k> attempts: <reason>".
#pragma once

#include <functional>
#include <string>

#include "platform/alert_settings.h"

namespace platform::sim {

// Seconds that the tries of settings may take at most, waits included.
unsigned delivery_seconds(const event_service_settings& settings);

// Runs attempt at most the retry attempts of settings + 1 times, apart by
// their retry interval, until it succeeds; true when it did.
bool deliver_with_retries(int index, const char* kind, const event_service_settings& settings,
                          const std::function<bool(std::string& error)>& attempt);

}  // namespace platform::sim
