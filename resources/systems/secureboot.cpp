#include "resources/systems/secureboot.h"

#include <iostream>

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "resources/systems/bios_attributes.h"

namespace odata::redfish {
namespace {

constexpr const char* secure_boot_uri = "/redfish/v1/Systems/1/SecureBoot";
constexpr const char* secure_boot_attribute = "SecureBoot";

// The attribute's value in a set of BIOS attributes; null when it has none.
const boost::json::string* secure_boot_in(const boost::json::object& attributes) {
    const boost::json::value* value = attributes.if_contains(secure_boot_attribute);
    return value ? value->if_string() : nullptr;
}

struct secure_boot_changes {
    std::optional<bool> enable;
};

void read_enable(const request_member& member, secure_boot_changes& changes,
                 result_record& result) {
    changes.enable = require_boolean(member.value, member.path, result);
}

constexpr patch_property<secure_boot_changes> patch_properties[] = {
    {"SecureBootEnable", read_enable},
};

}  // namespace

secureboot::secureboot(request_context& context)
    : redfish(context, "SecureBoot", std::string(schema_file_of("SecureBoot").version),
              "UEFI Secure Boot", secure_boot_uri) {}

// Before the BIOS has reported its attributes it runs with their defaults.
int secureboot::get(request_context&) {
    set_common_properties();
    const std::optional<boost::json::value> reported = reported_or_default(secure_boot_attribute);
    const boost::json::string* running = reported ? reported->if_string() : nullptr;
    if (!running) return 0;
    const boost::json::object pending = pending_bios_attributes();
    const boost::json::string* next = secure_boot_in(pending);
    set("SecureBootEnable", *(next ? next : running) == "Enabled");
    set("SecureBootCurrentBoot", *running == "Enabled" ? "Enabled" : "Disabled");
    // The simulated BIOS has its platform key enrolled and takes keys only
    // through its setup.
    set("SecureBootMode", "UserMode");
    return 0;
}

int secureboot::patch(request_context& context) {
    const secure_boot_changes changes = read_patch_body(patch_properties, context.body_json());
    const boost::json::object attributes{
        {secure_boot_attribute, *changes.enable ? "Enabled" : "Disabled"}};
    if (!add_pending_bios_attributes(attributes)) throw_http_error(500, "Base.1.10.InternalError");
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
