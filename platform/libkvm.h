// The BMC's remote console (KVM over IP) settings (the BMC's libipmi.so).
// Return codes are those of plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

// How the remote console moves the host's pointer.
enum {
    MOUSE_MODE_ABSOLUTE,  // a USB tablet: the pointer follows the console's
    MOUSE_MODE_RELATIVE,  // a USB mouse: for hosts without tablet drivers
    MOUSE_MODE_SINGLE,    // one pointer: the console hides its own
    MOUSE_MODE_COUNT
};

// MOUSE_MODE_*, or PLT_ERR_IO.
int PltKVM_GetMouseMode(void);
// PLT_ERR_ARGUMENT for a value that is no MOUSE_MODE_*.
int PltKVM_SetMouseMode(int mode);

enum { KVM_KEYBOARD_US, KVM_KEYBOARD_DE, KVM_KEYBOARD_FR, KVM_KEYBOARD_JP, KVM_KEYBOARD_COUNT };
enum { KVM_TIMEOUT_MINUTES_MAX = 480 };

struct St_KvmConfig {
    uint8_t local_monitor_off;  // the host's own monitor is blanked during a session
    uint8_t keyboard_layout;    // KVM_KEYBOARD_*
    uint16_t timeout_minutes;   // an idle session ends: 1..KVM_TIMEOUT_MINUTES_MAX
};

int PltKVM_GetConfig(St_KvmConfig* config);
// PLT_ERR_ARGUMENT for a value out of range.
int PltKVM_SetConfig(const St_KvmConfig* config);

}  // extern "C"
