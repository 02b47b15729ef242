#include "resources/managers/syslog.h"

#include <cstdio>

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libsyslog.h"
#include "platform/libweb.h"
#include "platform/outbound_destinations.h"
#include "resources/managers/ipv4_address.h"
#include "resources/managers/manager_settings_audit.h"
#include "resources/managers/manager_settings_uris.h"

namespace odata::redfish {
namespace {

constexpr long max_port = 65535;

struct syslog_changes {
    std::optional<bool> enabled;
    std::optional<std::string> address;
    std::optional<long> port;
};

void read_enabled(const request_member& member, syslog_changes& changes, result_record& result) {
    changes.enabled = require_boolean(member.value, member.path, result);
}

// A literal IPv4 address: the destination is never looked up on the way.
void read_address(const request_member& member, syslog_changes& changes, result_record& result) {
    const boost::json::string* text = require_text(member.value, member.path, result);
    if (!text) return;
    const std::string address(*text);
    if (!parse_ipv4(address))
        add_value_message(result, "Base.1.10.PropertyValueFormatError", address, member.path);
    else if (platform::refused_host(address))
        add_message(result, "Base.1.10.PropertyValueIncorrect", {member.path, address},
                    {"/" + member.path});
    else
        changes.address = address;
}

void read_port(const request_member& member, syslog_changes& changes, result_record& result) {
    changes.port = require_integer_in_range(member.value, 1, max_port, member.path, result);
}

void read_protocol(const request_member& member, syslog_changes&, result_record& result) {
    require_one_of(member.value, {"UDP"}, member.path, result);
}

constexpr patch_property<syslog_changes> syslog_properties[] = {
    {"SyslogEnabled", read_enabled},
    {"Address", read_address},
    {"Port", read_port},
    {"Protocol", read_protocol},
};

St_SyslogConfig current_config() {
    St_SyslogConfig config;
    if (PltSYSLOG_GetConfig(&config) == PLT_OK) return config;
    console_log("[ERROR] Syslog: settings unreadable\n");
    throw_http_error(500, "Base.1.10.InternalError");
}

// The stored settings with the changes; sending needs a destination.
St_SyslogConfig changed_config(const syslog_changes& changes) {
    St_SyslogConfig config = current_config();
    if (changes.enabled) config.enabled = *changes.enabled;
    if (changes.address)
        std::snprintf(config.address, sizeof config.address, "%s", changes.address->c_str());
    if (changes.port) config.port = static_cast<uint16_t>(*changes.port);
    if (config.enabled && config.address[0] == '\0')
        throw_property_conflict("SyslogEnabled", "Address");
    return config;
}

}  // namespace

syslog::syslog(request_context& context)
    : redfish(context, "TwrSyslog", std::string(schema_file_of("TwrSyslog").version), "Syslog",
              manager_syslog_uri) {}

int syslog::get(request_context&) {
    const St_SyslogConfig config = current_config();
    set_common_properties();
    set("Description", "Remote syslog of the BMC's event log");
    set("SyslogEnabled", config.enabled != 0);
    set("Address", config.address);
    set("Port", config.port);
    set("Protocol", "UDP");
    return 0;
}

int syslog::patch(request_context& context) {
    const syslog_changes changes = read_patch_body(syslog_properties, context.body_json());
    const St_SyslogConfig config = changed_config(changes);
    if (PltSYSLOG_SetConfig(&config) != PLT_OK) throw_http_error(500, "Base.1.10.InternalError");
    const std::string what = config.enabled ? "remote syslog to " + std::string(config.address) +
                                                  ":" + std::to_string(config.port)
                                            : "remote syslog off";
    log_manager_setting_change(context.user_name, what);
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
