// The BMC's clock source and NTP servers (the BMC's libipmi.so). Return
// codes are those of plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

enum { NTP_SERVER_COUNT = 3, NTP_SERVER_SIZE = 128 };

enum { NTP_SOURCE_MANUAL = 0, NTP_SOURCE_NTP = 1 };

struct St_NtpConfig {
    uint8_t source;                                   // NTP_SOURCE_*
    char servers[NTP_SERVER_COUNT][NTP_SERVER_SIZE];  // "" for an unused one
};

int PltNTP_GetConfig(St_NtpConfig* config);
// PLT_ERR_ARGUMENT for an unknown source or a server that is not a host
// name or address (letters, digits, '.', '-', ':').
int PltNTP_SetConfig(const St_NtpConfig* config);

}  // extern "C"
