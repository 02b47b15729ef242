// Power metering of the simulated host, <root>/var/bmc/power.ini:
//
//   [Control] ConsumedWatts (while host power is on), LimitWatts (0: none),
//             LimitException (POWER_LIMIT_*)
//   [Metrics] MinWatts, MaxWatts, AverageWatts, Samples
//
// Missing values take the defaults of a lightly loaded two-socket server.
// Whether a bay holds a working supply is the state of its "PSn Status"
// sensor (PS_STATE_* bits).
#pragma once

#include <cstdint>
#include <string>

namespace platform {

const std::string& power_state_file();

// A new consumption reading, folded into the metrics (and the history
// settled first, power_history.h); false when a file cannot be written.
bool set_consumed_watts(uint32_t watts);

// What the host draws while its power is on.
uint32_t host_load_watts();

// The power limit (0: none) and what happens when it is exceeded.
bool set_power_limit(uint32_t watts, uint8_t exception);

}  // namespace platform
