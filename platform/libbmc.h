// The BMC's own firmware and its restart (the BMC's libipmi.so). Return
// codes are those of plt_result.h.
#pragma once

#include "platform/plt_result.h"

extern "C" {

// Copies the running BMC firmware's version and a NUL into version (size
// bytes, truncated to fit); PLT_ERR_ARGUMENT for a null or empty buffer.
int UtilGetBmcFwVersion(char* version, int size);

// Restarts the BMC. What it keeps only in memory and under /tmp is lost:
// sessions, mounted virtual media, staged files. Settings under /nv stay.
int PltBMC_Reset(void);

// Restores the manager's settings to their defaults, all of them or none:
// NTP, remote syslog, IP access control, the KCS privilege and the serial
// console port.
int PltBMC_ResetConfig(void);

}  // extern "C"
