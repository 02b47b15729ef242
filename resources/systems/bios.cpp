#include "resources/systems/bios.h"

#include <iostream>

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "resources/systems/bios_attributes.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

constexpr const char* attribute_registry = "BiosAttributeRegistry.1.0.0";

std::string bios_uri(const request_context& context) {
    return context.uri == bios_settings_uri ? bios_settings_uri : bios_uri_of_system;
}

boost::json::object settings_annotation() {
    return boost::json::object({{"@odata.type", schema_type(schema_file_of("Settings"))},
                                {"SettingsObject", link(bios_settings_uri)}},
                               answer_storage());
}

struct bios_changes {
    boost::json::object attributes;
};

void read_attributes(const request_member& member, bios_changes& changes, result_record& result) {
    read_bios_attribute_changes(member, changes.attributes, result);
}

constexpr patch_property<bios_changes> bios_properties[] = {
    {"Attributes", read_attributes},
};

}  // namespace

bios::bios(request_context& context)
    : redfish(context, "Bios", std::string(schema_file_of("Bios").version),
              context.uri == bios_settings_uri ? "BIOS Pending Settings" : "BIOS Configuration",
              bios_uri(context)) {}

bool bios::settings_object() const { return uri_ == bios_settings_uri; }

int bios::get(request_context&) {
    set_common_properties();
    set("AttributeRegistry", attribute_registry);
    if (settings_object()) {
        set("Attributes", pending_bios_attributes());
        return 0;
    }
    set("Attributes", current_bios_attributes());
    set("@Redfish.Settings", settings_annotation());
    set("Actions", {{"#Bios.ResetBios", {{"target", bios_reset_target_uri}}},
                    {"#Bios.ChangePassword",
                     {{"target", bios_change_password_target_uri},
                      {"@Redfish.ActionInfo", bios_change_password_actioninfo_uri}}}});
    return 0;
}

int bios::patch(request_context& context) {
    if (!settings_object()) method_not_allowed();
    const bios_changes changes = read_patch_body(bios_properties, context.body_json());
    if (!changes.attributes.empty() && !add_pending_bios_attributes(changes.attributes))
        throw_http_error(500, "Base.1.10.InternalError");
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
