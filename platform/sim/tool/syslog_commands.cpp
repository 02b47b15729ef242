// bmcsim syslog: where the event log's new lines go over UDP.
#include <cstdio>
#include <ostream>

#include "platform/libsyslog.h"
#include "platform/sim/remote_syslog.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace syslog_commands {

int show(const St_SyslogConfig& config, std::ostream& out) {
    out << "enabled=" << (config.enabled ? "on" : "off") << '\n'
        << "destination=" << config.address << ':' << config.port << "/udp\n";
    return exit_ok;
}

// on | off | destination ADDRESS PORT: one change to the current settings.
bool change(const arguments& words, St_SyslogConfig& config) {
    if (words[0] != "destination") {
        config.enabled = words[0] == "on";
        return true;
    }
    long long port = 0;
    if (!parse_number(words[2], 1, 65535, port)) return false;
    std::snprintf(config.address, sizeof config.address, "%s", words[1].c_str());
    config.port = static_cast<uint16_t>(port);
    return words[1].size() < sizeof config.address;
}

int run_syslog(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    St_SyslogConfig config;
    if (PltSYSLOG_GetConfig(&config) != PLT_OK) {
        err << "bmcsim: " << platform::syslog_settings_file() << " is malformed\n";
        return exit_failed;
    }
    if (command == "show" && words.size() == 1) return show(config, out);
    const bool valid = ((command == "on" || command == "off") && words.size() == 1) ||
                       (command == "destination" && words.size() == 3);
    if (!valid || !change(words, config)) return usage(self, err);
    const int status = PltSYSLOG_SetConfig(&config);
    if (status == PLT_OK) return exit_ok;
    if (status == PLT_ERR_ARGUMENT) {
        err << "bmcsim: remote syslog needs an IPv4 destination\n";
        return exit_usage;
    }
    err << "bmcsim: cannot write " << platform::syslog_settings_file() << '\n';
    return exit_failed;
}

}  // namespace syslog_commands

const area syslog_area = {"syslog", "show | on | off | destination IPV4ADDRESS PORT",
                          syslog_commands::run_syslog};

}  // namespace bmcsim
