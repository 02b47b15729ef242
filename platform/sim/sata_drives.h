// The simulated host's onboard SATA bays: four bays, the first two holding
// a 960 GB SSD and a 4 TB disk; whether a drive sits in a bay is kept in
// <root>/var/bmc/storage.ini:
//
//   [SataBay<n>] Present=0|1 (default: 1 for the bays that hold a drive)
#pragma once

namespace platform {

// Bay 0-based; false when there is no such bay, it has no drive to put
// back, or the state is not stored.
bool set_sata_drive_present(int bay, bool present);

}  // namespace platform
