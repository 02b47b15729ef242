// The privileges of the service and what each method of a route requires
// of its caller.
#pragma once

#include <array>
#include <initializer_list>

#include "frontend/request_context.h"

namespace odata::redfish {

// One bit per privilege. The names are in security/roles.cpp.
enum privilege : unsigned {
    privilege_login = 1u << 0,
    privilege_configure_manager = 1u << 1,
    privilege_configure_users = 1u << 2,
    privilege_configure_self = 1u << 3,
    privilege_configure_components = 1u << 4,
    privilege_oem_clear_log = 1u << 5,
    privilege_oem_power_control = 1u << 6,
    // Not held by any role: the method needs no authentication at all.
    privilege_no_auth = 1u << 7,
};

// Whose resource a route names, for ConfigureSelf.
enum class own_target { none, session, account };

// What one method requires: every privilege of one of the sets. A set
// that holds ConfigureSelf is met only on the caller's own target.
struct method_requirement {
    static constexpr size_t max_sets = 3;
    std::array<unsigned, max_sets> sets{};  // 0 ends the list
};

constexpr method_requirement any_of(std::initializer_list<unsigned> sets) {
    method_requirement requirement;
    size_t at = 0;
    for (unsigned set : sets) requirement.sets[at++] = set;
    return requirement;
}

// The requirement of each method, indexed by method code, and the target
// that ConfigureSelf applies to.
struct route_privileges {
    std::array<method_requirement, DELETE + 1> methods{};
    own_target own = own_target::none;

    const method_requirement& of(int method) const { return methods.at(method); }
};

// Reading needs one requirement, every change (PATCH, POST, PUT, DELETE)
// another.
constexpr route_privileges reads_and_changes(method_requirement read, method_requirement change,
                                             own_target own = own_target::none) {
    route_privileges privileges;
    privileges.methods[GET] = read;
    privileges.methods[PATCH] = change;
    privileges.methods[POST] = change;
    privileges.methods[PUT] = change;
    privileges.methods[DELETE] = change;
    privileges.own = own;
    return privileges;
}

constexpr route_privileges with_method(route_privileges privileges, int method,
                                       method_requirement requirement) {
    privileges.methods[method] = requirement;
    return privileges;
}

}  // namespace odata::redfish
