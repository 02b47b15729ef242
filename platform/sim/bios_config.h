// The BMC's side of the BIOS configuration, <root>/var/bmc/bios.ini:
//
//   [HII] Supported=0|1 (default 1), BootOrder=<options, comma-separated>
//
// BootOrder is the order handed to the HII daemon for the next boot.
#pragma once

#include <string>
#include <vector>

namespace platform {

const std::string& bios_config_file();

bool set_hii_supported(bool supported);

// The boot order last handed over, empty when none.
std::vector<std::string> pending_boot_order();

}  // namespace platform
