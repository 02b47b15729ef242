// The simulated BMC's real-time clock: the host machine's clock plus an
// offset, <root>/nv/bmc/clock.ini:
//
//   [Clock] OffsetSeconds=<seconds added to the host's clock; default 0>
//
// so that a test can run the BMC in any year, 2038 and later included.
#pragma once

#include <string>

namespace platform::sim {

const std::string& clock_settings_file();

// Sets the clock to seconds since the epoch (or back to the host's clock);
// false when the file cannot be written.
bool set_bmc_clock(long long seconds);
bool reset_bmc_clock();

}  // namespace platform::sim
