// The predefined roles, their privilege levels and Redfish privileges.
#pragma once

#include <string_view>
#include <vector>

#include "framework/route_privileges.h"

namespace odata::redfish {

struct role_definition {
    std::string_view id;        // RoleId: "Administrator", "Operator", "ReadOnly"
    int level;                  // the user table's privilege level
    std::string_view log_text;  // how event-log lines name the level
    std::string_view description;
    unsigned privileges;  // privilege bits, the Oem ones included
};

// The three predefined roles, in collection order.
const std::vector<role_definition>& predefined_roles();

// The role of a privilege level or RoleId; null when none.
const role_definition* role_of_level(int level);
const role_definition* role_named(std::string_view id);

// Whether the role of a privilege level has every one of privileges.
bool level_has_privileges(int level, unsigned privileges);

// The names of the Redfish privileges of a bit set, in Redfish order, and
// those of its Oem privileges.
std::vector<std::string_view> privilege_names(unsigned privileges);
std::vector<std::string_view> oem_privilege_names(unsigned privileges);

// "Administrator", "Operator", "User", "No access" or "Unknown".
std::string_view level_log_text(int level);

}  // namespace odata::redfish
