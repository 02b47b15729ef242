#include "security/account_request.h"

#include <string_view>

#include "security/account_slots.h"

namespace odata::redfish {
namespace {

constexpr std::string_view required_on_create[] = {"UserName", "Password", "RoleId"};

// Properties of the resource that a client may not set.
constexpr std::string_view account_read_only[] = {
    "@odata.context", "@odata.etag", "@odata.id", "@odata.type", "Id",
    "Name",           "Description", "Links",
};

void read_property(std::string_view name, const boost::json::value& value,
                   const account_request& request, account_changes& changes,
                   result_record& result) {
    const unknown_property unknown =
        request.create ? unknown_property::in_post(request.action) : unknown_property::in_patch();
    if (name == "UserName") {
        changes.user_name = validate_user_name(value, request.slot, request.action, result);
    } else if (name == "Password") {
        changes.password = validate_password(value, result);
    } else if (name == "RoleId") {
        changes.privilege = validate_role_id(value, account_of_slot(request.slot), result);
    } else if (name == "Enabled") {
        changes.enabled = require_boolean(value, std::string(name), result);
    } else if (name == "Locked") {
        changes.unlock = validate_unlock(value, result);
    } else if (name == "AccountTypes") {
        // Nothing to store: every account reaches Redfish, and SNMP follows
        // the account's SNMP settings.
        validate_account_types(value, result);
    } else if (name == "SNMP") {
        changes.snmp = validate_snmp(value, unknown, result);
    } else if (listed_in(account_read_only, name)) {
        add_property_message(result, "Base.1.10.PropertyNotWritable", std::string(name));
    } else {
        unknown.report(result, std::string(name));
    }
}

}  // namespace

account_changes read_account_request(const boost::json::object& body,
                                     const account_request& request, result_record& result) {
    account_changes changes;
    if (request.create) {
        for (std::string_view name : required_on_create) {
            if (!body.contains(name))
                add_property_message(result, "Base.1.10.PropertyMissing", std::string(name));
        }
    }
    for (const auto& [name, value] : body) read_property(name, value, request, changes, result);
    return changes;
}

}  // namespace odata::redfish
