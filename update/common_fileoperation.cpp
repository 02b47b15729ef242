#include "update/common_fileoperation.h"

#include <iostream>
#include <vector>

#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libipmi_config.h"
#include "platform/libweb.h"
#include "resources/managers/action_parameters.h"
#include "security/roles.h"
#include "update/configuration_audit.h"
#include "update/form_parts.h"

namespace odata::redfish {
namespace {

constexpr const char* export_uri = "/restapi/twri/Actions/File.Export";
constexpr const char* bmc_config_file_name = "bmc_config.json";
constexpr int file_version = 1;
constexpr const char* ipmi_member = "IPMIConfig";

[[noreturn]] void refuse(const char* reason) {
    console_log("[FileOperation] import refused: %s\n", reason);
    throw_http_error(400, "TWR.1.0.OemFileoperationErrorMessage", {reason});
}

// The users' password hashes and the SNMPv3 keys stay out: the file may
// travel where the BMC's secrets must not.
boost::json::object exported_document() {
    std::vector<char> text(IPMI_CONFIG_MAX_SIZE);
    const int length = PltIPMI_BackupConfig(text.data(), static_cast<int>(text.size()), 0);
    boost::system::error_code error;
    const boost::json::value ipmi =
        length < 0 ? boost::json::value()
                   : boost::json::parse(std::string_view(text.data(), length), error);
    if (length < 0 || error || !ipmi.is_object()) {
        console_log("[ERROR] FileOperation: the configuration cannot be read (%d)\n", length);
        throw_http_error(500, "Base.1.10.InternalError");
    }
    return {{"Version", file_version}, {ipmi_member, ipmi}};
}

}  // namespace

// The whole file is checked before anything changes: its own members
// here, every setting by the restore.
std::string ipmi_section(const boost::json::value& file, std::string& reason) {
    const boost::json::object* document = file.if_object();
    const boost::json::value* version = document ? document->if_contains("Version") : nullptr;
    const boost::json::value* ipmi = document ? document->if_contains(ipmi_member) : nullptr;
    if (!document)
        reason = "the file is not a JSON object";
    else if (!version || !version->is_int64() || version->get_int64() != file_version)
        reason = "the file has no Version 1";
    else if (!ipmi || !ipmi->is_object())
        reason = "the file has no IPMIConfig object";
    else if (document->size() != 2)
        reason = "the file has members this BMC does not know";
    else
        return boost::json::serialize(*ipmi);
    return {};
}

int common_fileoperation::post(request_context& context) {
    if (context.uri == export_uri)
        export_file(context);
    else
        import_file(context);
    return 0;
}

// Never cached: the file is the BMC's whole configuration.
void common_fileoperation::export_file(request_context& context) {
    check_no_parameters(context, "File.Export");
    const std::string text = boost::json::serialize(exported_document());
    audit_configuration(context.user_name, "TWR.1.0.OemFileDownloaded", {bmc_config_file_name});
    write_status_line(200);
    set_response_header(response_header::content_disposition,
                        std::string("attachment; filename=\"") + bmc_config_file_name + "\"");
    write_header_block(text.size(), body_kind::attachment);
    std::cout << text;
}

void common_fileoperation::import_file(request_context& context) {
    std::string reason_text;
    const std::string ipmi = ipmi_section(context.body_json(), reason_text);
    if (ipmi.empty()) refuse(reason_text.c_str());
    char reason[IPMI_CONFIG_REASON_SIZE] = {};
    // An import that changes the user table is an account change.
    const int may_change_users = level_has_privileges(context.privilege, privilege_configure_users);
    const int result = PltIPMI_RestoreConfig(ipmi.data(), static_cast<int>(ipmi.size()),
                                             may_change_users, reason, sizeof reason);
    if (result == PLT_ERR_FORMAT) refuse(reason);
    if (result == PLT_ERR_STATE) throw_insufficient_privilege();
    if (result != PLT_OK) throw_http_error(500, "Base.1.10.InternalError");
    audit_configuration(context.user_name, "TWR.1.0.OemIpmiConfigRestored");
    answer_form_success("Base.1.10.Success");
}

}  // namespace odata::redfish
