#include "resources/managers/kcsinterface.h"

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "frontend/result_writer.h"
#include "platform/libkcs.h"
#include "platform/libweb.h"
#include "resources/managers/manager_settings_audit.h"
#include "resources/managers/manager_settings_uris.h"

namespace odata::redfish {
namespace {

constexpr const char* interface_name = "KCS Interface";

// IPMI privilege levels 1 to 4.
constexpr const char* level_names[] = {"Callback", "User", "Operator", "Administrator"};

const char* level_name(int level) {
    if (level < KCS_PRIV_CALLBACK || level > KCS_PRIV_ADMINISTRATOR) return "Unknown";
    return level_names[level - KCS_PRIV_CALLBACK];
}

int level_of(const std::string& name) {
    int level = KCS_PRIV_CALLBACK;
    while (name != level_name(level)) ++level;
    return level;
}

struct kcs_changes {
    std::optional<std::string> privilege;
};

void read_privilege(const request_member& member, kcs_changes& changes, result_record& result) {
    changes.privilege = require_one_of(
        member.value, {"Administrator", "Operator", "User", "Callback"}, member.path, result);
}

constexpr patch_property<kcs_changes> kcs_properties[] = {
    {"Privilege", read_privilege},
};

}  // namespace

kcsinterface::kcsinterface(request_context& context)
    : redfish(context, "TwrKCSInterface", std::string(schema_file_of("TwrKCSInterface").version),
              interface_name, manager_kcs_interface_uri) {}

int kcsinterface::get(request_context&) {
    set_common_properties(interface_name);
    set("Privilege", level_name(UtilGetKCSPrivilege(KCS_CHANNEL)));
    return 0;
}

int kcsinterface::patch(request_context& context) {
    const kcs_changes changes = read_patch_body(kcs_properties, context.body_json());
    if (UtilSetKCSPrivilege(KCS_CHANNEL, level_of(*changes.privilege)) != PLT_OK) {
        console_log("[KCSInterface] privilege not stored\n");
        write_status_line(400);
        set_body(render_result(general_error()));
        return 0;
    }
    log_manager_setting_change(context.user_name, "KCS privilege set to " + *changes.privilege);
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
