// Applies account changes to the BMC user table under the user-table lock,
// commits them, and writes an event-log line for each applied change.
// Nothing is committed when the platform refused a step.
#pragma once

#include "security/account_request.h"
#include "security/account_slots.h"

namespace odata::redfish {

// refused: the platform refused a value; not_stored: the user table (or
// the lockout and SNMP settings beside it) could not be locked or written,
// which is logged.
enum class account_write { done, refused, not_stored };

struct created_account {
    account_write written;
    bool limit_reached;
    int slot;
};

// Creates the account in the first free slot: the slot the request was
// validated for, unless another process has taken it meanwhile.
created_account create_account(const account_changes& account);

// Applies the changes in this order: name, password, privilege, enabled
// flag, then unlock and the SNMP settings.
account_write modify_account(const account_record& account, const account_changes& changes);

// Empties the account's slot.
account_write remove_account(const account_record& account);

// Throws the answer of a write that was not done: 400 AccountNotModified
// for a refused value, 500 InternalError when nothing could be stored.
void check_account_written(account_write outcome);

}  // namespace odata::redfish
