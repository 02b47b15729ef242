// Host power control, identify light, boot-device tables and board type
// (the BMC's libipmi.so). Return codes are those of plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

// ---------------------------------------------------------------- host power
// Every change is added to the BMC event log. Deferred steps (the end of a
// graceful shutdown, the power-on half of a power cycle) take effect once
// their time has come, at the next call of any of these functions.

// 1 when host power is on, 0 when off, PLT_ERR_IO when the state is unreadable.
int PltCHASSIS_PowerStatus(void);
// Powers the host on (cancels a pending graceful shutdown); 0 when already on.
int PltCHASSIS_PowerUp(void);
// Powers the host off at once (cancels a pending power-on); 0 when already off.
int PltCHASSIS_PowerDown(void);
// Asks the host OS to shut down: power goes off CHASSIS_SOFT_SHUTDOWN_SECONDS
// later. PLT_ERR_STATE when the host is off.
int PltCHASSIS_SoftShutdown(void);
// Powers the host off, then on again interval_seconds later (0: at once).
// Callers pass at_p_St_GlobalVar->power_cycle_byte. PLT_ERR_STATE when off.
int PltCHASSIS_PowerCycle(uint8_t interval_seconds);
// Hard reset: power stays on. PLT_ERR_STATE when the host is off.
int PltCHASSIS_PowerReset(void);
// Pulses the diagnostic interrupt (NMI) to the host. PLT_ERR_STATE when off.
int PltCHASSIS_PulseDiagnosticInterrupt(void);

enum { CHASSIS_SOFT_SHUTDOWN_SECONDS = 2 };

// What the host's power does when the BMC gets AC power back (the IPMI
// chassis power restore policy codes).
enum {
    POWER_RESTORE_ALWAYS_OFF = 0,
    POWER_RESTORE_LAST_STATE = 1,
    POWER_RESTORE_ALWAYS_ON = 2,
};

// POWER_RESTORE_*, or PLT_ERR_IO when the setting is unreadable.
int PltCHASSIS_GetRestorePolicy(void);
// PLT_ERR_ARGUMENT for a value that is no POWER_RESTORE_*.
int PltCHASSIS_SetRestorePolicy(int policy);

// ---------------------------------------------------------------- identify light
// The light's state is kept in at_p_St_GlobalVar: identify_blink while it
// blinks, identify_lit while it is steadily on. identify_state belongs to
// the Redfish service and is left alone. Needs GlobalParaInit.

enum {
    IDENTIFY_LIGHT_OFF = 0,
    IDENTIFY_LIGHT_BLINK = 1,
    IDENTIFY_LIGHT_ON = 3,  // steady on; only through the board operations
};

// IDENTIFY_LIGHT_BLINK or IDENTIFY_LIGHT_OFF; PLT_ERR_ARGUMENT for other
// values, PLT_ERR_STATE before GlobalParaInit.
int PltCHASSIS_Identify(uint8_t mode);

// The board's own operations.
struct St_BoardOperations {
    // Any IDENTIFY_LIGHT_* mode; returns as PltCHASSIS_Identify.
    int (*SetIdentifyLight)(uint8_t mode);
};

extern const St_BoardOperations* const board;

// Non-zero on twin-node boards (two nodes share the board's FRU; each node's
// serial and part number are in at_p_St_GlobalVar), 0 on single-node boards.
int GetQuillonType(void);

// ---------------------------------------------------------------- boot devices
// Rows of the boot-device tables. byte1 and byte2 are data bytes 1 and 2 of
// the IPMI boot-flags parameter (at_p_St_GlobalVar->boot_flags); byte2 AND
// BOOT_DEVICE_SELECTOR_MASK is the row's boot device selector. The first
// row of boot_flags is the "no override" entry: its bytes are AND masks that
// clear the selector instead of values. A row with a null name ends a table.

enum { BOOT_DEVICE_SELECTOR_MASK = 0x3C };

struct St_BootFlagEntry {
    const char* name;  // Redfish BootSource value
    uint8_t byte1;
    uint8_t byte2;
};

extern const St_BootFlagEntry boot_flags[];
extern const int ChassisBootTableSize;  // 7
extern const St_BootFlagEntry boot_flags_ext[];
extern const int ChassisBootTableExtSize;  // 1

}  // extern "C"
