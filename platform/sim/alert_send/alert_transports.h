// One delivery attempt per transport; each is bounded by its own timeouts
// and says why it failed in error.
#pragma once

#include <string>

#include "platform/sim/alert_requests.h"

namespace platform::sim {

// Seconds one attempt may take at most.
inline constexpr long alert_attempt_seconds = 10;

// The authorities that TLS destinations (https, SMTP over TLS) are verified
// against: <root>/etc/ssl/alert_ca.pem when it exists, the system's otherwise.
const std::string& alert_ca_file();

// POSTs body to an http or https URL; true for a 2xx answer.
bool post_redfish_event(const std::string& url, const std::string& body, std::string& error);

// Sends message to one recipient through the SMTP server of settings.
bool send_mail(const smtp_settings& settings, const std::string& recipient,
               const std::string& message, std::string& error);

// Sends an SNMPv2c or SNMPv3 trap to the entry's destination.
bool send_snmp_trap(const trap_delivery& trap, std::string& error);

}  // namespace platform::sim
