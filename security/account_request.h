// Reads the body of an account POST or PATCH: every property is validated
// in one pass, the messages of all refused ones are collected.
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>

#include "frontend/message.h"
#include "security/account_validation.h"

namespace odata::redfish {

struct account_changes {
    std::optional<std::string> user_name;
    std::optional<std::string> password;
    std::optional<int> privilege;
    std::optional<bool> enabled;
    bool unlock = false;
    std::optional<snmp_settings> snmp;
};

// Which request, for which account: a POST creates the account in slot.
struct account_request {
    bool create;
    int slot;
    std::string action;  // the request's URI, named by action messages
};

// The accepted changes; result holds a message for every refused property.
account_changes read_account_request(const boost::json::object& body,
                                     const account_request& request, result_record& result);

}  // namespace odata::redfish
