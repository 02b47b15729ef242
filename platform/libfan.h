// The BMC's fan control (the BMC's libipmi.so). Return codes are those of
// plt_result.h.
#pragma once

#include "platform/plt_result.h"

extern "C" {

enum {
    FAN_MODE_STANDARD,    // duty follows temperatures with a margin
    FAN_MODE_FULL_SPEED,  // every fan at full duty
    FAN_MODE_OPTIMAL,     // lowest duty that keeps temperatures in range
    FAN_MODE_HEAVY_IO,    // extra airflow for add-in cards
    FAN_MODE_COUNT
};

// FAN_MODE_*, or PLT_ERR_IO.
int PltFAN_GetMode(void);
// The fans' target duty follows the mode at once. PLT_ERR_ARGUMENT for a
// value that is no FAN_MODE_*.
int PltFAN_SetMode(int mode);
// The fans' target duty in percent (1..100), or PLT_ERR_IO.
int PltFAN_GetTargetDuty(void);

}  // extern "C"
