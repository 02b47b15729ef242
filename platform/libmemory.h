// Error counts of the host's memory modules, as the BMC collects them from
// the host's error reports (the BMC's libipmi.so). Return codes are those of
// plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

struct St_MemoryErrorCounts {
    uint32_t correctable;    // corrected ECC errors since the host's power-on
    uint32_t uncorrectable;  // uncorrectable ECC errors since the host's power-on
};

// The counts of the module in the slot whose device locator is given
// ("CPU1_DIMM_A1"); zeros for a module without errors.
int MemGetErrorCounts(const char* device_locator, St_MemoryErrorCounts* counts);

}  // extern "C"
