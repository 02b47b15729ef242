// Storage controllers that the BMC has found on the host (the BMC's
// storage-controller library). Return codes are those of plt_result.h.
#pragma once

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

}  // extern "C"
