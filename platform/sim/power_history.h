// The simulated host's power-consumption history, one sample a minute while
// host power is on, kept for a week (at most POWER_HISTORY_MINUTES
// samples), in <root>/var/bmc/power_history.bin:
//
//   "PWH1", the settled minute, the sample count (uint32 each), then per
//   sample its minute (uint32) and watts (uint16); little-endian.
//
// Nothing samples on a clock. Host power and the host's draw stay as they
// are between changes, so the minutes since the settled minute are implied
// by the present state: every change of either first writes those samples
// (settles), and a reader adds them in memory. A missing file was settled
// never: a fresh simulator's host has drawn its present load all week.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/libipmi_power.h"

namespace platform {

const std::string& power_history_file();

struct power_history {
    uint32_t settled_minute = 0;          // samples are written through it
    std::vector<St_PowerSample> samples;  // ascending minutes
};

std::string encode_power_history(const power_history& history);

// False for a text that holds no history.
bool decode_power_history(std::string_view text, power_history& history);

// Adds the samples of the minutes after the settled minute through
// last_minute: watts each while host_on, none while off. Keeps the week
// that ends with last_minute.
void extend_power_history(power_history& history, uint32_t last_minute, bool host_on,
                          uint16_t watts);

// Sets the samples of consecutive minutes from first_minute, replacing
// those there were; minutes after the settled minute are refused (false).
bool put_power_samples(power_history& history, uint32_t first_minute,
                       const std::vector<uint16_t>& watts);

// Before a change of host power or of the host's draw at now_seconds:
// writes the samples the state so far implies. False when the file cannot
// be written.
bool settle_power_history(long long now_seconds, bool host_on, uint32_t watts);

// Samples for tests and demonstrations: the first minutes_ago minutes ago,
// the next a minute later, and so on; all must lie in the past week.
bool add_power_samples(uint32_t minutes_ago, const std::vector<uint16_t>& watts);

// Drops every sample; the history restarts from now.
bool clear_power_history();

}  // namespace platform
