// The account a session belongs to, re-read on every use: a session lives
// only while its account does, under the same name and enabled.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/session_record.h"

namespace odata::redfish {

// Who a new session belongs to.
struct session_owner {
    std::string user_name;
    int privilege = 0;
    uint8_t source = SESSION_SOURCE_LOCAL;
    int account_slot = -1;  // the local user's slot, -1 for others
    uint32_t account_key = 0;
};

// The owner of a local user's slot as the user table holds it now.
std::optional<session_owner> local_owner(int slot, uint8_t source);

// The user name of a record (a view into it); a 16-character name fills its
// field.
std::string_view session_user_name(const St_RedfishSession& record);

// Brings the record's privilege up to its account's role; false when the
// account is gone, disabled, renamed or replaced by a new user of the slot.
// Sessions of other users keep what they were given at login while their
// directory service stays enabled, or for the host firmware's, while the
// host interface is on and the credential of that name exists.
bool follow_account(St_RedfishSession& record);

// The host firmware's sessions serve only requests over the host interface.
bool usable_over_this_channel(const St_RedfishSession& record);

}  // namespace odata::redfish
