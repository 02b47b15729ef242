#include "resources/systems/secureboot.h"

#include <iostream>

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libbios.h"
#include "resources/systems/bios_attributes.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

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

constexpr patch_property<secure_boot_changes> secure_boot_properties[] = {
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
    // Without a platform key the firmware is in setup mode and checks no
    // signatures.
    St_SecureBootKeys keys{};
    if (UtilGetSecureBootKeys(&keys) != PLT_OK) throw_http_error(500, "Base.1.10.InternalError");
    set("SecureBootEnable", *(next ? next : running) == "Enabled");
    set("SecureBootCurrentBoot", *running == "Enabled" && keys.pk > 0 ? "Enabled" : "Disabled");
    set("SecureBootMode", keys.pk > 0 ? "UserMode" : "SetupMode");
    set("Actions", {{"#SecureBoot.ResetKeys",
                     {{"target", secure_boot_reset_keys_target_uri},
                      {"@Redfish.ActionInfo", secure_boot_reset_keys_actioninfo_uri}}}});
    return 0;
}

int secureboot::patch(request_context& context) {
    const secure_boot_changes changes =
        read_patch_body(secure_boot_properties, context.body_json());
    const boost::json::object attributes{
        {secure_boot_attribute, *changes.enable ? "Enabled" : "Disabled"}};
    if (!add_pending_bios_attributes(attributes)) throw_http_error(500, "Base.1.10.InternalError");
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
