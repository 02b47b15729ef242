// RADIUS: the BMC's RADIUS client, a directory of logins while enabled.
// The shared secret goes in and never comes out (GET shows null, messages
// hide it).
#include <algorithm>
#include <cstdio>

#include "frontend/response_headers.h"
#include "platform/libdirectory.h"
#include "platform/session_record.h"
#include "resources/managers/ipv4_address.h"
#include "resources/managers/oem_settings.h"
#include "resources/managers/setting_readers.h"
#include "security/session_store.h"

namespace odata::redfish {
namespace {

constexpr const char* radius_name = "Radius";

struct radius_changes {
    std::optional<bool> enabled;
    std::optional<std::string> server;
    std::optional<int> port;
    std::optional<int> timeout_seconds;
    std::optional<std::string> secret;
};

// An IPv4 address or a DNS name that fits the setting.
bool is_radius_server_name(std::string_view name) {
    if (name.size() >= RADIUS_SERVER_SIZE) return false;
    if (parse_ipv4(name)) return true;
    for (std::size_t start = 0;;) {
        const std::size_t dot = name.find('.', start);
        if (!is_host_name(name.substr(start, dot - start))) return false;
        if (dot == std::string_view::npos) return true;
        start = dot + 1;
    }
}

void read_server(const request_member& member, radius_changes& changes, result_record& result) {
    const boost::json::string* text = member.value.if_string();
    if (!text)
        return add_value_message(result, "Base.1.10.PropertyValueTypeError",
                                 shown_value(member.value), member.path);
    if (!text->empty() && !is_radius_server_name(*text))
        return add_value_message(result, "Base.1.10.PropertyValueFormatError", std::string(*text),
                                 member.path);
    changes.server = std::string(*text);
}

// Printable, without blanks; null keeps the stored one.
void read_secret(const request_member& member, radius_changes& changes, result_record& result) {
    if (member.value.is_null()) return;
    const boost::json::string* text = require_text(member.value, member.path, result, true);
    if (!text) return;
    const bool printable =
        std::all_of(text->begin(), text->end(), [](char c) { return c > 0x20 && c < 0x7F; });
    if (text->size() >= RADIUS_SECRET_SIZE || !printable)
        return add_value_message(result, "Base.1.10.PropertyValueFormatError", hidden_value,
                                 member.path);
    changes.secret = std::string(*text);
}

constexpr patch_property<radius_changes> radius_properties[] = {
    {"Enabled", read_flag<&radius_changes::enabled>},
    {"ServerAddress", read_server},
    {"PortNumber", read_integer<&radius_changes::port, 1, 65535>},
    {"TimeoutSeconds", read_integer<&radius_changes::timeout_seconds, 1, RADIUS_TIMEOUT_MAX>},
    {"Secret", read_secret},
    {"SecretSet", read_only<radius_changes>},
};

St_RadiusConfig radius_config() {
    St_RadiusConfig config{};
    require_platform_ok(PltRADIUS_GetConfig(&config), "RADIUS");
    return config;
}

St_RadiusConfig changed_config(St_RadiusConfig config, const radius_changes& changes) {
    if (changes.enabled) config.enabled = *changes.enabled;
    if (changes.server)
        std::snprintf(config.server, sizeof config.server, "%s", changes.server->c_str());
    if (changes.port) config.port = static_cast<uint16_t>(*changes.port);
    if (changes.timeout_seconds)
        config.timeout_seconds = static_cast<uint8_t>(*changes.timeout_seconds);
    if (changes.secret) config.secret_set = 1;
    return config;
}

bool radius_user_logged_in() {
    const std::vector<int> ids = session_ids();
    return std::any_of(ids.begin(), ids.end(), [](int id) {
        const std::optional<St_RedfishSession> session = find_session(id);
        return session && session->source == SESSION_SOURCE_RADIUS;
    });
}

// One directory at a time; one that a user is logged in through stays.
void check_switch(const St_RadiusConfig& current, const St_RadiusConfig& wanted,
                  result_record& result) {
    if (wanted.enabled && !current.enabled) {
        const char* running = UtilGetLdapEnable()    ? "LDAP"
                              : UtilGetNewADEnable() ? "ActiveDirectory"
                                                     : nullptr;
        if (running)
            add_message(result, "TWR.1.0.OemOtherAuthenticationServiceIsRunning",
                        {running, radius_name}, {"/Enabled"});
    } else if (!wanted.enabled && current.enabled && radius_user_logged_in()) {
        add_message(result, "TWR.1.0.OemUserNotToDisabledServiceWhenUserLogined", {radius_name},
                    {"/Enabled"});
    }
}

// Enabled needs a server to ask and a secret to ask it with.
void check_complete(const St_RadiusConfig& wanted, result_record& result) {
    if (!wanted.enabled) return;
    if (wanted.server[0] == '\0')
        add_message(result, "Base.1.10.PropertyValueConflict", {"Enabled", "ServerAddress"},
                    {"/Enabled"});
    if (!wanted.secret_set)
        add_message(result, "Base.1.10.PropertyValueConflict", {"Enabled", "Secret"}, {"/Enabled"});
}

}  // namespace

radius::radius(request_context& context) : oem_setting(context, "TwrRADIUS", "RADIUS", "RADIUS") {}

int radius::get(request_context&) {
    const St_RadiusConfig config = radius_config();
    set_heading("The RADIUS client that authenticates logins");
    set("Enabled", config.enabled != 0);
    set("ServerAddress", config.server);
    set("PortNumber", config.port);
    set("TimeoutSeconds", config.timeout_seconds);
    set("Secret", boost::json::value(nullptr));
    set("SecretSet", config.secret_set != 0);
    return 0;
}

int radius::patch(request_context& context) {
    result_record result = general_error();
    const radius_changes changes =
        read_settings_members(radius_properties, context.body_json(), result);
    const St_RadiusConfig current = radius_config();
    const St_RadiusConfig wanted = changed_config(current, changes);
    if (result.entries.empty()) {
        check_complete(wanted, result);
        check_switch(current, wanted, result);
    }
    refuse_if_reported(result);
    require_platform_ok(
        PltRADIUS_SetConfig(&wanted, changes.secret ? changes.secret->c_str() : nullptr), "RADIUS");
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
