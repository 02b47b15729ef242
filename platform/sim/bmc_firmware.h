// The simulated BMC's firmware and restarts, <root>/var/bmc/bmc.ini:
//
//   [Firmware] Version=<text> (default "1.00.00")
//   [Reset]    Count=<restarts since the state root was made>
#pragma once

#include <string>

namespace platform {

const std::string& bmc_settings_file();

// A non-empty version without control characters, at most 63 bytes.
bool set_bmc_firmware_version(const std::string& version);

long long bmc_reset_count();

}  // namespace platform
