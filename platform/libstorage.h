// Storage controllers that the BMC has found on the host (the BMC's
// storage-controller library). Return codes are those of plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

// RAID controllers and host bus adapters of the Broadcom-class family.
int GetBRCMDeviceNum(void);
// RAID controllers of the Marvell-class family.
int UtilGetMRVLCtrlNum(void);
// NVMe drive slots that the backplanes support; 0 without NVMe backplane.
int GetNVMeSSDMaxNumSupport(void);

// 1 while the BMC is still collecting the storage inventory from the
// controllers (their counts and details are not final yet), 0 after.
int UtilIsStorageInventoryLoading(void);

// A bay of the host's onboard SATA controller and the drive it holds.
struct St_SataDrive {
    uint8_t bay;      // 0-based
    uint8_t present;  // 0: the bay is empty and the other fields are zero
    uint8_t solid_state;
    uint64_t capacity_bytes;
    char manufacturer[32];
    char model[41];
    char serial_number[21];
    char revision[9];
};

// The bays of the onboard SATA controller.
int UtilGetSataBayCount(void);

// The bay at a 0-based index; PLT_ERR_NOT_FOUND past the last one.
int UtilGetSataDrive(int bay, St_SataDrive* drive);

}  // extern "C"
