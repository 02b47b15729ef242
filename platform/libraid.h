// The RAID controllers on the host (the BMC's storage-controller library):
// their physical drives and the volumes made of them. A controller is named
// by its family and its 0-based index within the family, counted by
// GetBRCMDeviceNum and UtilGetMRVLCtrlNum (libstorage.h). Return codes are
// those of plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

enum { RAID_FAMILY_BROADCOM = 0, RAID_FAMILY_MARVELL = 1 };

enum {
    RAID_BAYS = 6,         // drive bays of every controller's enclosure
    RAID_VOLUMES_MAX = 8,  // volumes a controller holds at once
    RAID_VOLUME_NAME_MAX = 15,
};

enum { RAID_LEVEL_0 = 0, RAID_LEVEL_1 = 1, RAID_LEVEL_5 = 5, RAID_LEVEL_10 = 10 };

enum {
    RAID_DRIVE_OK = 0,
    RAID_DRIVE_FAILED = 1,    // out of service; its volume is degraded
    RAID_DRIVE_REPLACED = 2,  // a new drive in a failed one's place, not yet rebuilt
};

enum {
    RAID_VOLUME_OPTIMAL = 0,
    RAID_VOLUME_DEGRADED = 1,  // a member drive failed or waits for a rebuild
    RAID_VOLUME_FOREIGN = 2,   // found on the drives, made by another controller
};

// No long operation runs or has run (erase, initialisation).
enum { RAID_NO_OPERATION = -1 };

struct St_RaidDrive {
    uint8_t bay;
    uint8_t state;     // RAID_DRIVE_*
    uint8_t locating;  // the bay's locator LED blinks
    int8_t volume;     // the volume the drive belongs to, -1 for none
    // Secure erase: RAID_NO_OPERATION, or 0..100 (100: the last erase ended).
    int8_t erase_percent;
    uint64_t capacity_bytes;
    char model[41];
    char serial_number[21];
};

struct St_RaidVolume {
    uint8_t id;
    uint8_t level;  // RAID_LEVEL_*
    uint8_t state;  // RAID_VOLUME_*
    uint8_t locating;
    // Background initialisation after creation: 0..100.
    int8_t init_percent;
    uint8_t drive_count;
    uint8_t bays[RAID_BAYS];
    uint64_t capacity_bytes;
    char name[RAID_VOLUME_NAME_MAX + 1];
};

struct St_RaidController {
    uint8_t volume_count;
    uint8_t volume_ids[RAID_VOLUMES_MAX];  // ascending
    uint8_t saved;  // 1: the configuration is saved to the controller's flash
    char model[33];
};

// Whether a controller makes a volume of the level from count drives:
// RAID0 from 1, RAID1 2, RAID5 from 3, RAID10 an even number from 4, never
// more than RAID_BAYS. PLT_ERR_ARGUMENT for an unknown level or a count
// that it refuses.
int UtilRaidCheckLevel(int level, int count);

// PLT_ERR_NOT_FOUND for a controller, bay or volume that does not exist.
int UtilRaidGetController(int family, int controller, St_RaidController* info);
int UtilRaidGetDrive(int family, int controller, int bay, St_RaidDrive* drive);
int UtilRaidGetVolume(int family, int controller, int volume, St_RaidVolume* info);

// Creates a volume (initialising in the background) of the given drives;
// the controller checks the level, the drive count and that every drive is
// healthy and in no volume: PLT_ERR_ARGUMENT or PLT_ERR_STATE otherwise.
int UtilRaidCreateVolume(int family, int controller, int level, const uint8_t* bays, int count,
                         const char* name, int* volume);
int UtilRaidDeleteVolume(int family, int controller, int volume);
int UtilRaidClearVolumes(int family, int controller);
// Rebuilds a degraded volume onto its replaced drives; PLT_ERR_STATE when
// the volume is not degraded or a member drive still failed.
int UtilRaidRebuildVolume(int family, int controller, int volume);
// Makes a foreign volume the controller's own; PLT_ERR_STATE when it is not
// foreign.
int UtilRaidImportVolume(int family, int controller, int volume);
int UtilRaidSetVolumeLocate(int family, int controller, int volume, int on);
int UtilRaidSetDriveLocate(int family, int controller, int bay, int on);
// Saves the configuration to the controller's flash.
int UtilRaidSaveConfig(int family, int controller);

// Starts a secure erase; PLT_ERR_STATE when the drive belongs to a volume,
// has failed, or an erase runs on it.
int UtilRaidStartSecureErase(int family, int controller, int bay);
// Stops a running erase; PLT_ERR_STATE when none runs.
int UtilRaidAbortSecureErase(int family, int controller, int bay);

}  // extern "C"
