// Applies account changes to the BMC user table under the user-table lock,
// commits them, and writes an event-log line for each applied change.
// Every function answers false (or failed) when the platform refused a step;
// nothing is committed then.
#pragma once

#include "security/account_request.h"
#include "security/account_slots.h"

namespace odata::redfish {

struct created_account {
    enum { created, limit_reached, failed } outcome;
    int slot;
};

// Creates the account in the first free slot: the slot the request was
// validated for, unless another process has taken it meanwhile.
created_account create_account(const account_changes& account);

// Applies the changes in this order: name, password, privilege, enabled
// flag, then unlock and the SNMP settings.
bool modify_account(const account_record& account, const account_changes& changes);

// Empties the account's slot.
bool remove_account(const account_record& account);

}  // namespace odata::redfish
