// Whether the simulated host supports crash dumps: the flag file
// <root>/var/bmc/crashdump_supported exists.
#pragma once

#include <string>

namespace platform {

const std::string& crashdump_flag_file();

// Creates or removes the flag file; false when that fails.
bool set_crashdump_supported(bool supported);

}  // namespace platform
