// The simulated RAID controllers' configuration, <root>/var/bmc/raid.ini:
//
//   [Settings]            EraseSeconds, InitSeconds (how long a secure erase and a
//                         volume's initialisation take; 1..3600, default 30 and 10)
//   [<Family><c>]         Saved=0|1; per bay Bay<n>State=0|1|2 (RAID_DRIVE_*),
//                         Bay<n>Locate=0|1, Bay<n>EraseStart and Bay<n>EraseEnd
//                         (ms since the epoch)
//   [<Family><c>Volume<v>] Level, Drives (bays, "0,1"), Foreign=0|1, Locate=0|1,
//                         InitStart and InitEnd (ms since the epoch), Name
//
// Family is "Broadcom" or "Marvell"; a controller exists while its index is
// below its family's count in storage.ini.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/libraid.h"

namespace platform::sim {

struct raid_bay_record {
    int state = RAID_DRIVE_OK;
    bool locating = false;
    long long erase_start_ms = 0;  // 0: no erase was started
    long long erase_end_ms = 0;
};

struct raid_volume_record {
    int id = 0;
    int level = RAID_LEVEL_0;
    std::vector<int> bays;
    bool foreign = false;
    bool locating = false;
    long long init_start_ms = 0;  // 0: nothing to initialise
    long long init_end_ms = 0;
    std::string name;
};

struct raid_controller_record {
    bool saved = false;
    raid_bay_record bays[RAID_BAYS];
    std::vector<raid_volume_record> volumes;  // ascending ids
};

const std::string& raid_store_file();

bool raid_controller_exists(int family, int controller);

// The stored configuration; defaults for a controller never changed.
raid_controller_record read_raid_controller(int family, int controller);

// One locked read-modify-write of a controller: change answers a PLT_*
// code, and only PLT_OK stores what it changed. PLT_ERR_NOT_FOUND for a
// controller that does not exist.
int change_raid_controller(int family, int controller,
                           const std::function<int(raid_controller_record&)>& change);

enum class raid_duration { erase, init };

int raid_seconds(raid_duration which);
// 1..3600; false when out of range or not stored.
bool set_raid_seconds(raid_duration which, int seconds);

// Milliseconds since the epoch.
long long raid_clock_ms();

// An operation that starts now and takes its duration: start and end.
void start_raid_operation(raid_duration which, long long& start_ms, long long& end_ms);
// 0..100 of an operation from start_ms to end_ms.
int raid_progress(long long start_ms, long long end_ms);

}  // namespace platform::sim
