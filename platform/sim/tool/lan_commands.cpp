// bmcsim lan: the BMC's LAN channel and its network services.
#include <ostream>

#include "platform/liblan.h"
#include "platform/sim/bmc_lan.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace lan_commands {

int show(std::ostream& out) {
    St_LanConfig config;
    PltLAN_GetConfig(&config);
    out << "mac=" << config.mac_address << '\n'
        << "link=" << (config.link_up ? "up" : "down") << '\n'
        << "speed=" << config.speed_mbps << '\n'
        << "dhcp=" << (config.dhcp_enabled ? "on" : "off") << '\n'
        << "address=" << config.ipv4_address << '\n'
        << "mask=" << config.subnet_mask << '\n'
        << "gateway=" << config.gateway << '\n'
        << "hostname=" << config.host_name << '\n'
        << "domain=" << config.domain_name << '\n'
        << "dns=";
    for (const auto& server : config.name_servers)
        if (server[0] != '\0') out << (&server == &config.name_servers[0] ? "" : " ") << server;
    out << '\n';
    for (int service = 0; service < NET_SERVICE_COUNT; ++service) {
        St_NetService state;
        PltNET_GetService(service, &state);
        const char* name = platform::net_service_name(service);
        out << name << '=' << (state.enabled ? "on" : "off") << '\n'
            << name << ".port=" << state.port << '\n';
    }
    out << "rakp=" << (PltIPMI_GetRakpRequired() ? "required" : "optional") << '\n';
    return exit_ok;
}

// service NAME on|off [PORT]
int set_service(const area& self, const arguments& words, std::ostream& err) {
    const int service = platform::find_net_service(words[1]);
    const std::string& switch_word = words[2];
    if (service < 0 || (switch_word != "on" && switch_word != "off")) return usage(self, err);
    St_NetService state;
    PltNET_GetService(service, &state);
    state.enabled = switch_word == "on";
    long long port = state.port;
    if (words.size() == 4 && !parse_number(words[3], 1, 65535, port)) return usage(self, err);
    state.port = static_cast<uint16_t>(port);
    return written(PltNET_SetService(service, &state) == PLT_OK, platform::lan_settings_file(),
                   err);
}

int run_lan(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out);
    if (command == "service" && (words.size() == 3 || words.size() == 4))
        return set_service(self, words, err);
    long long speed = 0;
    if (command == "link" && words.size() == 3 && (words[1] == "up" || words[1] == "down") &&
        parse_number(words[2], 0, 100000, speed))
        return written(platform::set_lan_link(words[1] == "up", static_cast<int>(speed)),
                       platform::lan_settings_file(), err);
    if (command == "dns" && words.size() >= 2 && words.size() <= 2 + LAN_NAME_SERVERS)
        return written(platform::set_lan_dns(words[1], {words.begin() + 2, words.end()}),
                       platform::lan_settings_file(), err);
    return usage(self, err);
}

}  // namespace lan_commands

const area lan_area = {"lan",
                       "show | link up|down SPEED | service NAME on|off [PORT] | "
                       "dns DOMAIN [SERVER...]",
                       lan_commands::run_lan};

}  // namespace bmcsim
