// The BMC's IP access control (the BMC's libipmi.so): an enable switch and
// a table of rules, each an IPv4 address range that is allowed or denied.
// The table is stored; the web service applies it to each request. Return
// codes are those of plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

enum { IP_FILTER_RULE_COUNT = 16 };

enum { IP_FILTER_ALLOW = 0, IP_FILTER_DENY = 1 };

struct St_IpFilterRule {
    uint8_t used;
    uint32_t first;  // IPv4 addresses in host order, first <= last
    uint32_t last;
    uint8_t action;  // IP_FILTER_*
};

struct St_IpFilterConfig {
    uint8_t enabled;
    St_IpFilterRule rules[IP_FILTER_RULE_COUNT];
};

int PltIPFILTER_GetConfig(St_IpFilterConfig* config);
int PltIPFILTER_SetEnabled(int enabled);
// Each change below is one locked step. PLT_ERR_ARGUMENT for a rule with
// first > last or an unknown action.
// Stores rule in the first unused slot: its index, or PLT_ERR_STATE when
// every slot is used.
int PltIPFILTER_AddRule(const St_IpFilterRule* rule);
// Replaces the rule at index (0-based); a rule that is not used deletes it.
// PLT_ERR_NOT_FOUND for an index outside the table.
int PltIPFILTER_SetRule(int index, const St_IpFilterRule* rule);

}  // extern "C"
