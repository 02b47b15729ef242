#include "security/roles.h"

#include <algorithm>

#include "platform/libipmi_users.h"

namespace odata::redfish {
namespace {

constexpr std::pair<unsigned, std::string_view> privilege_table[] = {
    {privilege_login, "Login"},
    {privilege_configure_manager, "ConfigureManager"},
    {privilege_configure_users, "ConfigureUsers"},
    {privilege_configure_self, "ConfigureSelf"},
    {privilege_configure_components, "ConfigureComponents"},
};

constexpr std::pair<unsigned, std::string_view> oem_privilege_table[] = {
    {privilege_oem_clear_log, "OemClearLog"},
    {privilege_oem_power_control, "OemPowerControl"},
};

template <size_t count>
std::vector<std::string_view> names_of(const std::pair<unsigned, std::string_view> (&table)[count],
                                       unsigned privileges) {
    std::vector<std::string_view> names;
    for (const auto& [bit, name] : table)
        if (privileges & bit) names.push_back(name);
    return names;
}

}  // namespace

const std::vector<role_definition>& predefined_roles() {
    static const std::vector<role_definition> roles = {
        {"Administrator", PRIV_ADMINISTRATOR, "Administrator", "Administrator User Role",
         privilege_login | privilege_configure_manager | privilege_configure_users |
             privilege_configure_self | privilege_configure_components | privilege_oem_clear_log |
             privilege_oem_power_control},
        {"Operator", PRIV_OPERATOR, "Operator", "Operator User Role",
         privilege_login | privilege_configure_self | privilege_configure_components |
             privilege_oem_power_control},
        {"ReadOnly", PRIV_USER, "User", "ReadOnly User Role",
         privilege_login | privilege_configure_self},
    };
    return roles;
}

const role_definition* role_of_level(int level) {
    const auto& roles = predefined_roles();
    auto found = std::find_if(roles.begin(), roles.end(),
                              [level](const role_definition& role) { return role.level == level; });
    return found == roles.end() ? nullptr : &*found;
}

bool level_has_privileges(int level, unsigned privileges) {
    const role_definition* role = role_of_level(level);
    return role && (role->privileges & privileges) == privileges;
}

const role_definition* role_named(std::string_view id) {
    const auto& roles = predefined_roles();
    auto found = std::find_if(roles.begin(), roles.end(),
                              [id](const role_definition& role) { return role.id == id; });
    return found == roles.end() ? nullptr : &*found;
}

std::vector<std::string_view> privilege_names(unsigned privileges) {
    return names_of(privilege_table, privileges);
}

std::vector<std::string_view> oem_privilege_names(unsigned privileges) {
    return names_of(oem_privilege_table, privileges);
}

std::string_view level_log_text(int level) {
    if (const role_definition* role = role_of_level(level)) return role->log_text;
    return level == PRIV_NO_ACCESS ? "No access" : "Unknown";
}

}  // namespace odata::redfish
