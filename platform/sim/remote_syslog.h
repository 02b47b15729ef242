// The simulated BMC's remote syslog destination, <root>/nv/bmc/syslog.ini:
//
//   [Syslog] Enabled=0|1 (default 0), Address=<dotted IPv4>, Port (default 514)
#pragma once

#include <string>

namespace platform {

const std::string& syslog_settings_file();

}  // namespace platform

namespace platform::sim {

// Sends one logged event to the destination while remote syslog is on:
// one datagram, never waiting (a full socket buffer drops it).
void forward_to_syslog(long long time, int event_code, const std::string& text);

}  // namespace platform::sim
