#include "platform/sim/ntp_settings.h"

#include <cctype>
#include <cstring>

#include "base/bmc_root.h"
#include "platform/libntp.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

std::string server_key(int index) { return "NTP.Server" + std::to_string(index + 1); }

bool terminated(const char (&field)[NTP_SERVER_SIZE]) {
    return std::memchr(field, '\0', sizeof field) != nullptr;
}

}  // namespace

namespace platform {

const std::string& ntp_settings_file() {
    static fixed_bmc_path path("/nv/bmc/ntp.ini");
    return path.get();
}

bool valid_ntp_server(std::string_view server) {
    if (server.size() >= NTP_SERVER_SIZE) return false;
    for (char c : server) {
        const bool allowed =
            std::isalnum(static_cast<unsigned char>(c)) || c == '.' || c == '-' || c == ':';
        if (!allowed) return false;
    }
    return true;
}

}  // namespace platform

extern "C" int PltNTP_GetConfig(St_NtpConfig* config) {
    if (!config) return PLT_ERR_ARGUMENT;
    const std::shared_ptr<const pt::ptree> state =
        platform::sim::stored_state_ini(platform::ntp_settings_file());
    *config = St_NtpConfig{};
    config->source =
        state->get("NTP.Source", "Manual") == "NTP" ? NTP_SOURCE_NTP : NTP_SOURCE_MANUAL;
    for (int index = 0; index < NTP_SERVER_COUNT; ++index) {
        const std::string server = state->get(server_key(index), "");
        if (!platform::valid_ntp_server(server)) return PLT_ERR_FORMAT;
        platform::sim::copy_text(config->servers[index], server);
    }
    return PLT_OK;
}

extern "C" int PltNTP_SetConfig(const St_NtpConfig* config) {
    if (!config || config->source > NTP_SOURCE_NTP) return PLT_ERR_ARGUMENT;
    for (const auto& server : config->servers)
        if (!terminated(server) || !platform::valid_ntp_server(server)) return PLT_ERR_ARGUMENT;
    const bool written =
        platform::sim::update_state_ini(platform::ntp_settings_file(), [&](pt::ptree& state) {
            state.put("NTP.Source", config->source == NTP_SOURCE_NTP ? "NTP" : "Manual");
            for (int index = 0; index < NTP_SERVER_COUNT; ++index)
                state.put(server_key(index), std::string(config->servers[index]));
            return true;
        });
    return written ? PLT_OK : PLT_ERR_IO;
}
