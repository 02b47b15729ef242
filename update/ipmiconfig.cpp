#include "update/ipmiconfig.h"

#include <iostream>
#include <vector>

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libipmi_config.h"
#include "platform/libweb.h"
#include "resources/managers/action_parameters.h"
#include "security/roles.h"
#include "update/configuration_audit.h"
#include "update/form_parts.h"
#include "update/update_uris.h"

namespace odata::redfish {
namespace {

constexpr const char* config_part = "ConfigFile";
constexpr const char* config_file_name = "ipmi_config.json";
constexpr const char* download_action = "TwrIPMIConfig.Download";
constexpr const char* include_keys = "IncludeKeys";

boost::json::object action(const char* target) { return {{"target", target}}; }

[[noreturn]] void throw_not_restored(const char* reason) {
    console_log("[IPMIConfig] restore refused: %s\n", reason);
    throw_http_error(400, "TWR.1.0.OemIpmiConfigRestoreErrorMessage", {reason});
}

const std::string& uploaded_file(const form_parts& form) {
    if (form.status == form_status::too_large) throw_not_restored("the file is too large");
    const auto part = form.parts.find(config_part);
    if (part == form.parts.end())
        throw_http_error(400, "TWR.1.0.OemIpmiConfigMissingItem", {config_part});
    return part->second;
}

// The users' password hashes and the SNMPv3 keys come only when asked for
// with {"IncludeKeys": true}, which needs ConfigureUsers besides the
// ConfigureManager of every update-service action; a file without them
// restores the stored ones.
bool keys_asked_for(const request_context& context) {
    bool include = false;
    read_optional_parameters(
        context, download_action,
        [&](const std::string& name, const boost::json::value& value, result_record& result) {
            if (name != include_keys) return false;
            if (value.is_bool())
                include = value.get_bool();
            else
                add_parameter_message(result, "Base.1.10.ActionParameterValueTypeError",
                                      shown_value(value), name, download_action);
            return true;
        });
    if (include && !level_has_privileges(context.privilege, privilege_configure_users))
        throw_insufficient_privilege();
    return include;
}

}  // namespace

ipmiconfig::ipmiconfig(request_context& context)
    : redfish(context, "TwrIPMIConfig", std::string(schema_file_of("TwrIPMIConfig").version),
              "IPMI Configuration", ipmi_config_uri) {}

int ipmiconfig::get(request_context&) {
    set_common_properties();
    set("Description",
        "The BMC's IPMI configuration: LAN, network services, serial port, users and alert "
        "destinations");
    set("Actions", {{"#TwrIPMIConfig.Upload", action(ipmi_config_upload_uri)},
                    {"#TwrIPMIConfig.Download", action(ipmi_config_download_uri)}});
    return 0;
}

// Never cached: even without keys the file is the BMC's whole configuration.
int ipmiconfig_download::post(request_context& context) {
    std::vector<char> text(IPMI_CONFIG_MAX_SIZE);
    const int length = PltIPMI_BackupConfig(text.data(), static_cast<int>(text.size()),
                                            keys_asked_for(context) ? 1 : 0);
    if (length < 0) {
        console_log("[ERROR] IPMIConfig: the configuration cannot be read (%d)\n", length);
        throw_http_error(500, "Base.1.10.InternalError");
    }
    audit_configuration(context.user_name, "TWR.1.0.OemFileDownloaded", {config_file_name});
    write_status_line(200);
    set_response_header(response_header::content_disposition,
                        std::string("attachment; filename=\"") + config_file_name + "\"");
    write_header_block(static_cast<size_t>(length), body_kind::attachment);
    std::cout.write(text.data(), length);
    return 0;
}

int ipmiconfig_upload::post(request_context& context) {
    const form_parts form = read_form_parts(context, IPMI_CONFIG_MAX_SIZE, 1);
    const std::string& file = uploaded_file(form);
    char reason[IPMI_CONFIG_REASON_SIZE] = {};
    // A restore that changes the user table is an account change.
    const int may_change_users = level_has_privileges(context.privilege, privilege_configure_users);
    const int result = PltIPMI_RestoreConfig(file.data(), static_cast<int>(file.size()),
                                             may_change_users, reason, sizeof reason);
    if (result == PLT_ERR_FORMAT) throw_not_restored(reason);
    if (result == PLT_ERR_STATE) throw_insufficient_privilege();
    if (result != PLT_OK) throw_http_error(500, "Base.1.10.InternalError");
    audit_configuration(context.user_name, "TWR.1.0.OemIpmiConfigRestored");
    answer_form_success("TWR.1.0.OemIpmiConfigRestored");
    return 0;
}

}  // namespace odata::redfish
