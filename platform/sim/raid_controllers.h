// What bmcsim does to the simulated RAID controllers beyond the library's
// functions: drives that fail or are replaced, and volumes that another
// controller made.
#pragma once

#include <cstdint>
#include <vector>

namespace platform {

enum class raid_drive_change { fail, replace };

// A replaced drive of a volume waits for the volume's rebuild; one of no
// volume is ready at once. False for no such drive or when not stored.
bool set_raid_drive(int family, int controller, int bay, raid_drive_change what);

// A foreign volume of the given drives; a PLT_* code.
int add_foreign_volume(int family, int controller, int level, const std::vector<uint8_t>& bays);

}  // namespace platform
