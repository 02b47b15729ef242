#include "resources/managers/ntp.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cstdio>

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libntp.h"
#include "platform/libweb.h"
#include "resources/managers/ipv4_address.h"
#include "resources/managers/manager_settings_audit.h"
#include "resources/managers/manager_settings_uris.h"

namespace odata::redfish {
namespace {

struct ntp_changes {
    std::optional<std::string> source;
    std::optional<std::vector<std::string>> servers;
};

// A host name of DNS labels, or an IPv4 or IPv6 address.
bool is_ntp_server_name(std::string_view text) {
    if (text.empty() || text.size() >= NTP_SERVER_SIZE) return false;
    in6_addr ipv6;
    if (parse_ipv4(text) || inet_pton(AF_INET6, std::string(text).c_str(), &ipv6) == 1) return true;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t dot = std::min(text.find('.', start), text.size());
        if (!is_host_name(text.substr(start, dot - start))) return false;
        start = dot + 1;
    }
    return true;
}

void read_source(const request_member& member, ntp_changes& changes, result_record& result) {
    changes.source = require_one_of(member.value, {"NTP", "Manual"}, member.path, result);
}

void read_servers(const request_member& member, ntp_changes& changes, result_record& result) {
    const boost::json::array* list = member.value.if_array();
    if (!list || list->size() > NTP_SERVER_COUNT) {
        const char* id =
            list ? "Base.1.10.PropertyValueFormatError" : "Base.1.10.PropertyValueTypeError";
        add_value_message(result, id, shown_value(member.value), member.path);
        return;
    }
    std::vector<std::string> servers;
    for (std::size_t index = 0; index < list->size(); ++index) {
        const std::string path = member.path + "/" + std::to_string(index);
        const boost::json::string* text = require_text((*list)[index], path, result);
        if (text && !is_ntp_server_name(*text))
            add_value_message(result, "Base.1.10.PropertyValueFormatError", std::string(*text),
                              path);
        else if (text)
            servers.emplace_back(*text);
    }
    changes.servers = std::move(servers);
}

constexpr patch_property<ntp_changes> ntp_properties[] = {
    {"ClockSource", read_source},
    {"NTPServers", read_servers},
};

St_NtpConfig current_config() {
    St_NtpConfig config;
    if (PltNTP_GetConfig(&config) == PLT_OK) return config;
    console_log("[ERROR] NTP: settings unreadable\n");
    throw_http_error(500, "Base.1.10.InternalError");
}

// The stored settings with the changes; NTP needs a server to ask.
St_NtpConfig changed_config(const ntp_changes& changes) {
    St_NtpConfig config = current_config();
    if (changes.source)
        config.source = *changes.source == "NTP" ? NTP_SOURCE_NTP : NTP_SOURCE_MANUAL;
    if (changes.servers) {
        for (int index = 0; index < NTP_SERVER_COUNT; ++index) {
            const std::size_t at = static_cast<std::size_t>(index);
            const std::string server = at < changes.servers->size() ? (*changes.servers)[at] : "";
            std::snprintf(config.servers[index], NTP_SERVER_SIZE, "%s", server.c_str());
        }
    }
    if (config.source == NTP_SOURCE_NTP && config.servers[0][0] == '\0')
        throw_property_conflict("ClockSource", "NTPServers");
    return config;
}

}  // namespace

boost::json::array configured_ntp_servers(const St_NtpConfig& config) {
    boost::json::array servers;
    for (const auto& server : config.servers)
        if (server[0] != '\0') servers.emplace_back(server);
    return servers;
}

ntp::ntp(request_context& context)
    : redfish(context, "TwrNTP", std::string(schema_file_of("TwrNTP").version), "NTP",
              manager_ntp_uri) {}

int ntp::get(request_context&) {
    const St_NtpConfig config = current_config();
    set_common_properties();
    set("Description", "Where the BMC's clock takes its time from");
    set("ClockSource", config.source == NTP_SOURCE_NTP ? "NTP" : "Manual");
    set("NTPServers", configured_ntp_servers(config));
    return 0;
}

int ntp::patch(request_context& context) {
    const ntp_changes changes = read_patch_body(ntp_properties, context.body_json());
    const St_NtpConfig config = changed_config(changes);
    if (PltNTP_SetConfig(&config) != PLT_OK) throw_http_error(500, "Base.1.10.InternalError");
    log_manager_setting_change(context.user_name, config.source == NTP_SOURCE_NTP
                                                      ? "NTP clock source set"
                                                      : "manual clock source set");
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
