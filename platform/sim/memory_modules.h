// Taking a memory module out of the simulated host: its SMBIOS memory
// device then reports an empty slot, as the BIOS reports one at the next
// boot.
#pragma once

#include <string>

namespace platform {

enum class module_removal { removed, no_such_module, table_unreadable, not_stored };

// The module in the slot whose device locator is given ("CPU1_DIMM_A1").
module_removal remove_memory_module(const std::string& device_locator);

}  // namespace platform
