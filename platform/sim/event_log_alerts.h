// The acknowledged part of the simulated event log's alerts, in
// <root>/var/bmc/event_log_ack.ini:
//
//   [Acknowledged] Time=<seconds of the newest record acknowledged>
//                  AtTime=<alert records of that second acknowledged>
//
// Records carry whole seconds only: those of the newest second that came
// after the acknowledgement are told apart by their count.
#pragma once

#include <string>

namespace platform {

const std::string& event_log_ack_file();

}  // namespace platform
