// Failed authentications in the BMC event log (code 137), at most
// max_logged_failures per source address a minute: a flood of bad requests
// must not wash the log's other lines out.
#pragma once

#include <string>

namespace odata::redfish {

constexpr int max_logged_failures = 10;
constexpr long failure_log_period = 60;  // seconds

// Logs a failed authentication from the caller's address; text is the URI.
void log_failed_authentication(const std::string& text);

}  // namespace odata::redfish
