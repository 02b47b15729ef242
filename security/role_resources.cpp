#include "security/role_resources.h"

#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "security/roles.h"

namespace odata::redfish {
namespace {

boost::json::array texts(const std::vector<std::string_view>& names) {
    return boost::json::array(names.begin(), names.end(), answer_storage());
}

}  // namespace

std::string role_uri(std::string_view role_id) {
    return std::string(roles_uri) + "/" + std::string(role_id);
}

rolecollection::rolecollection(request_context& context)
    : redfish(context, "RoleCollection", "", "Roles Collection", roles_uri) {}

int rolecollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members;
    for (const role_definition& each : predefined_roles()) members.push_back(role_uri(each.id));
    set_members(members);
    return 0;
}

role::role(request_context& context)
    : redfish(context, "Role", std::string(schema_file_of("Role").version), "User Role",
              role_uri(context.captures.empty() ? "" : context.captures[0])) {}

int role::get(request_context& context) {
    const role_definition* definition =
        role_named(context.captures.empty() ? "" : context.captures[0]);
    if (!definition) throw_http(404);
    set_common_properties();
    set("Description", definition->description);
    set("IsPredefined", true);
    set("AssignedPrivileges", texts(privilege_names(definition->privileges)));
    set("OemPrivileges", texts(oem_privilege_names(definition->privileges)));
    set("RoleId", definition->id);
    return 0;
}

}  // namespace odata::redfish
