#include "platform/sim/radius_client.h"

#include <algorithm>
#include <cstring>

#include "base/bmc_root.h"
#include "platform/libdirectory.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

constexpr mode_t owner_only = 0600;
constexpr uint16_t radius_port = 1812;
constexpr uint8_t default_timeout_seconds = 5;

// Printable, no blanks: a name or address, or a secret, that stays on one
// line of the file as it is.
bool is_printable_word(const char* text) {
    return std::all_of(text, text + std::strlen(text), [](char c) { return c > 0x20 && c < 0x7F; });
}

bool fits(const std::string& text, std::size_t size) {
    return text.size() < size && is_printable_word(text.c_str());
}

bool valid(const St_RadiusConfig& config, const char* secret, bool secret_stored) {
    const std::size_t server_length = strnlen(config.server, RADIUS_SERVER_SIZE);
    if (server_length == RADIUS_SERVER_SIZE || !is_printable_word(config.server) ||
        config.port == 0 || config.timeout_seconds < 1 ||
        config.timeout_seconds > RADIUS_TIMEOUT_MAX)
        return false;
    if (secret && (!*secret || !fits(secret, RADIUS_SECRET_SIZE))) return false;
    return !config.enabled || (server_length > 0 && (secret || secret_stored));
}

bool update(const std::function<bool(pt::ptree&)>& change) {
    return platform::sim::update_state_ini(platform::radius_settings_file(), change, owner_only);
}

}  // namespace

namespace platform {

const std::string& radius_settings_file() {
    static fixed_bmc_path path("/nv/bmc/radius.ini");
    return path.get();
}

bool radius_directory_enabled() {
    St_RadiusConfig config;
    return PltRADIUS_GetConfig(&config) == PLT_OK && config.enabled && config.server[0] != '\0';
}

bool set_radius_enabled(bool enabled) {
    return update([&](pt::ptree& state) {
        state.put("RADIUS.Enabled", enabled ? 1 : 0);
        return true;
    });
}

bool set_radius_server(const std::string& server) {
    return fits(server, RADIUS_SERVER_SIZE) && update([&](pt::ptree& state) {
               state.put("RADIUS.Server", server);
               return true;
           });
}

}  // namespace platform

extern "C" int PltRADIUS_GetConfig(St_RadiusConfig* config) {
    if (!config) return PLT_ERR_ARGUMENT;
    const std::shared_ptr<const pt::ptree> state =
        platform::sim::stored_state_ini(platform::radius_settings_file());
    *config = {};
    config->enabled = state->get("RADIUS.Enabled", 0) != 0;
    platform::sim::copy_text(config->server, state->get("RADIUS.Server", std::string()));
    config->port = state->get("RADIUS.Port", radius_port);
    const int timeout = state->get("RADIUS.TimeoutSeconds", int{default_timeout_seconds});
    config->timeout_seconds = static_cast<uint8_t>(
        timeout >= 1 && timeout <= RADIUS_TIMEOUT_MAX ? timeout : default_timeout_seconds);
    config->secret_set = !state->get("RADIUS.Secret", std::string()).empty();
    return PLT_OK;
}

extern "C" int PltRADIUS_SetConfig(const St_RadiusConfig* config, const char* secret) {
    St_RadiusConfig current;
    if (!config || PltRADIUS_GetConfig(&current) != PLT_OK) return PLT_ERR_ARGUMENT;
    if (!valid(*config, secret, current.secret_set)) return PLT_ERR_ARGUMENT;
    const bool written = update([&](pt::ptree& state) {
        state.put("RADIUS.Enabled", config->enabled ? 1 : 0);
        state.put("RADIUS.Server", std::string(config->server));
        state.put("RADIUS.Port", config->port);
        state.put("RADIUS.TimeoutSeconds", static_cast<int>(config->timeout_seconds));
        if (secret) state.put("RADIUS.Secret", std::string(secret));
        return true;
    });
    return written ? PLT_OK : PLT_ERR_IO;
}
