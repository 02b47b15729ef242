// The BMC's BIOS POST code snooping (port 80h) (the BMC's libipmi.so).
// Return codes are those of plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

enum { POST_CODE_HISTORY = 64 };

// The last POST codes the host wrote, oldest first; at most
// POST_CODE_HISTORY: older ones are dropped.
struct St_PostCodes {
    uint8_t count;
    uint8_t codes[POST_CODE_HISTORY];
};

int PltSNOOP_GetPostCodes(St_PostCodes* codes);

}  // extern "C"
