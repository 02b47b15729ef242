// Power policies of the host's node manager (the management engine's power
// capping), as the BMC reads and clears them over IPMB (the BMC's
// libipmi.so). Return codes are those of plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

// The node manager holds at most this many policies.
enum { NM_MAX_POLICIES = 16 };

struct St_NmPolicy {
    uint8_t policy_id;  // 0 to 255, the node manager's own id
    uint8_t enabled;
    uint16_t power_limit_watts;
    uint32_t correction_time_ms;  // how soon the limit must be met
    uint16_t reporting_period_s;  // averaging period of the readings
};

// The policies into policies (NM_MAX_POLICIES entries), by id; returns
// how many, or a negative code.
int NmGetPolicies(St_NmPolicy* policies);
// Removes every policy; PLT_OK on success.
int NmClearAllPolicies(void);

}  // extern "C"
