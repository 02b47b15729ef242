// Names a process so that a later check tells it from another process that
// got the same id after it ended: its pid and its start time.
#pragma once

#include <sys/types.h>

#include <string>

namespace platform::sim {

struct process_identity {
    pid_t pid = 0;
    unsigned long long start = 0;  // clock ticks since boot; 0 when unknown
};

process_identity identify_process(pid_t pid);
bool process_alive(const process_identity& process);

// "<pid> <start>" and back; parsing yields pid 0 for anything else.
std::string format_process(const process_identity& process);
process_identity parse_process(const std::string& text);

}  // namespace platform::sim
