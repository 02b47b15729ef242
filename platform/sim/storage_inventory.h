// Storage controllers the simulated BMC has found, <root>/var/bmc/storage.ini:
//
//   [Controllers] Broadcom, Marvell, NVMeSlots (counts, default 0)
//   [Inventory]   Loading=0|1 (default 0)
#pragma once

#include <string>

namespace platform {

const std::string& storage_inventory_file();

enum class storage_count { broadcom, marvell, nvme_slots };

// Sets one count (0..64); false when out of range or not stored.
bool set_storage_count(storage_count which, int count);

bool set_storage_inventory_loading(bool loading);

}  // namespace platform
