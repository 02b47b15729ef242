#include "resources/managers/syslockdown.h"

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libipmi_users.h"
#include "resources/managers/manager_settings_audit.h"
#include "resources/managers/manager_settings_uris.h"

namespace odata::redfish {
namespace {

struct lockdown_changes {
    std::optional<bool> enabled;
};

void read_enabled(const request_member& member, lockdown_changes& changes, result_record& result) {
    changes.enabled = require_boolean(member.value, member.path, result);
}

constexpr patch_property<lockdown_changes> lockdown_properties[] = {
    {"SysLockdownEnabled", read_enabled},
};

}  // namespace

syslockdown::syslockdown(request_context& context)
    : redfish(context, "TwrSysLockdown", std::string(schema_file_of("TwrSysLockdown").version),
              "System Lockdown", manager_sys_lockdown_uri) {}

int syslockdown::get(request_context&) {
    set_common_properties();
    set("Description", "Refuses changes of firmware and of the BMC's configuration while on");
    set("SysLockdownEnabled", GetSetSysLockdownEnable(0, 0) != 0);
    return 0;
}

int syslockdown::patch(request_context& context) {
    const lockdown_changes changes = read_patch_body(lockdown_properties, context.body_json());
    if (GetSetSysLockdownEnable(1, *changes.enabled ? 1 : 0) != 0)
        throw_http_error(500, "Base.1.10.InternalError");
    log_manager_setting_change(context.user_name,
                               *changes.enabled ? "system lockdown on" : "system lockdown off");
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
