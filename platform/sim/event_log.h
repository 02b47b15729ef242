// The simulated BMC event log: <root>/var/log/bmc_events.jsonl, one compact
// JSON object per event and line:
// {"time":<seconds>,"code":<int>,"argument":<int>,"text":"..."}.
// A line that would take the log past max_event_log_bytes first moves it
// to bmc_events.jsonl.1, replacing the older part: the log keeps at most
// twice that, the newest lines.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace platform {

struct event_record {
    long long time;
    int code;
    int argument;
    std::string text;
};

constexpr std::size_t max_event_log_bytes = 256 * 1024;

const std::string& event_log_file();
std::string older_event_log_file();

// The well-formed records, oldest first; empty when there is no log.
std::vector<event_record> read_event_log();
// Visits them one by one until visit returns false.
void for_each_event(const std::function<bool(const event_record&)>& visit);

// Empties the log; false when it cannot be written.
bool clear_event_log();

}  // namespace platform
