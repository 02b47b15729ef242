// Checks a user name and password against the user table, the host
// firmware's credential and the external account providers, with lockout.
#pragma once

#include <string>

#include "platform/session_record.h"

namespace odata::redfish {

struct credential_check {
    enum outcome { refused, accepted, locked } result = refused;
    int slot = -1;          // the local user's slot, -1 for others
    std::string name = {};  // the account's name as stored; the name sent for others
    int privilege = 0;      // the privilege level granted
    uint8_t source = SESSION_SOURCE_LOCAL;
    bool log_failure = true;  // a refusal that goes to the event log
};

// client_ip names the caller in the login audit and in the reserved
// administrator's lockout. A login that cannot be audited, or whose bad
// password cannot be recorded, is refused.
credential_check check_credentials(const std::string& user_name, const std::string& password,
                                   const std::string& client_ip);

}  // namespace odata::redfish
