// bmcsim ntp: the BMC's clock source and NTP servers.
#include <cstdio>
#include <ostream>

#include "platform/libntp.h"
#include "platform/sim/ntp_settings.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace ntp_commands {

int show(std::ostream& out, std::ostream& err) {
    St_NtpConfig config;
    if (PltNTP_GetConfig(&config) != PLT_OK) {
        err << "bmcsim: " << platform::ntp_settings_file() << " is malformed\n";
        return exit_failed;
    }
    out << "source=" << (config.source == NTP_SOURCE_NTP ? "ntp" : "manual") << '\n';
    for (int index = 0; index < NTP_SERVER_COUNT; ++index)
        out << "server" << index + 1 << '=' << config.servers[index] << '\n';
    return exit_ok;
}

// source ntp|manual, or servers HOST...: one change to the current settings.
int change(const area& self, const arguments& words, std::ostream& err) {
    St_NtpConfig config;
    if (PltNTP_GetConfig(&config) != PLT_OK) config = St_NtpConfig{};
    if (words[0] == "source") {
        config.source = words[1] == "ntp" ? NTP_SOURCE_NTP : NTP_SOURCE_MANUAL;
    } else {
        for (int index = 0; index < NTP_SERVER_COUNT; ++index) {
            const std::size_t at = static_cast<std::size_t>(index) + 1;
            std::snprintf(config.servers[index], NTP_SERVER_SIZE, "%s",
                          at < words.size() ? words[at].c_str() : "");
        }
    }
    const int status = PltNTP_SetConfig(&config);
    if (status == PLT_OK) return exit_ok;
    if (status == PLT_ERR_ARGUMENT) return usage(self, err);
    err << "bmcsim: cannot write " << platform::ntp_settings_file() << '\n';
    return exit_failed;
}

int run_ntp(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out, err);
    const bool source =
        command == "source" && words.size() == 2 && (words[1] == "ntp" || words[1] == "manual");
    const bool servers = command == "servers" && words.size() <= NTP_SERVER_COUNT + 1;
    if (!source && !servers) return usage(self, err);
    return change(self, words, err);
}

}  // namespace ntp_commands

const area ntp_area = {"ntp", "show | source ntp|manual | servers [HOST [HOST [HOST]]]",
                       ntp_commands::run_ntp};

}  // namespace bmcsim
