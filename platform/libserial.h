// The BMC's serial console port (the BMC's libipmi.so). Return codes are
// those of plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

struct St_SerialConfig {
    uint8_t enabled;
    uint32_t bit_rate;  // 9600 .. 115200
    uint8_t data_bits;  // 7 or 8
    char parity;        // 'N', 'E' or 'O'
    uint8_t stop_bits;  // 1 or 2
    uint8_t hardware_flow_control;
};

enum { SERIAL_PORT_COUNT = 1 };

// port from 1; PLT_ERR_NOT_FOUND for another.
int PltSERIAL_GetConfig(int port, St_SerialConfig* config);

// PLT_ERR_ARGUMENT for a setting outside the ranges above.
int PltSERIAL_SetConfig(int port, const St_SerialConfig* config);

}  // extern "C"
