// The simulated BMC keeps St_GlobalVar and St_InterfaceInfo, in that order,
// in one file under the root, <root>/var/bmc/global.bin, which every
// attached process maps with MAP_SHARED.
#pragma once

#include <string>

namespace platform {

// The file that backs the shared block.
const std::string& shared_state_file();

// Puts the attached St_GlobalVar back to its defaults, keeping fcgi_mode
// (that flag belongs to the running service processes); false when this
// process has not attached the block.
bool reset_shared_state();

}  // namespace platform
