// Event-log lines of account changes. The texts name the account and what
// was done; they never hold a password.
#pragma once

#include <string>
#include <string_view>

namespace odata::redfish {

// "<user name>, <what>"
void log_account_change(const std::string& user_name, std::string_view what);
// "<account id>, <what>"
void log_account_change(int account_id, std::string_view what);

}  // namespace odata::redfish
