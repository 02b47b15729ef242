// The simulated host's power state, <root>/var/bmc/chassis.ini:
//
//   [Power]    On=0|1, SoftOffAt=<epoch seconds, 0 none>, OnAt=<epoch seconds, 0 none>
//   [Counters] Resets, Cycles, DiagnosticInterrupts
//
// A missing file is a host with power on. SoftOffAt and OnAt are the
// deferred steps of a graceful shutdown and a power cycle; the PltCHASSIS_*
// functions apply them once the clock has reached them.
#pragma once

#include <string>

namespace platform {

const std::string& chassis_state_file();

struct chassis_state {
    bool power_on = true;
    long long soft_off_at = 0;
    long long power_on_at = 0;
    long long resets = 0;
    long long cycles = 0;
    long long diagnostic_interrupts = 0;

    bool operator==(const chassis_state& other) const;
};

// The state with its due steps applied (and recorded); false when the state
// file cannot be updated.
bool current_chassis_state(chassis_state& state);

// The clock of the deferred steps; nullptr restores lx_time_get. For tests.
using chassis_clock = long (*)();
void set_chassis_clock_for_tests(chassis_clock clock);

}  // namespace platform
