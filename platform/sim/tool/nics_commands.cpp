// bmcsim nics: the host's network ports.
#include <ostream>
#include <string>

#include "platform/libnic.h"
#include "platform/sim/host_nics.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace nics_commands {

int show(std::ostream& out) {
    for (int i = 0; i < NicGetPortCount(); ++i) {
        St_HostNicPort port{};
        if (NicGetPort(i, &port) != PLT_OK) continue;
        out << "port" << i + 1 << ": adapter " << int(port.adapter) << " | port " << int(port.port)
            << " | " << port.mac_address << " | " << (port.link_up ? "up" : "down") << " | "
            << port.speed_mbps << " Mbps\n";
    }
    return exit_ok;
}

int link(const area& self, const arguments& words, std::ostream& err) {
    long long number = 0;
    const bool up = words[2] == "up";
    if ((!up && words[2] != "down") || !parse_number(words[1], 1, NicGetPortCount(), number))
        return usage(self, err);
    if (platform::set_host_port_link(static_cast<int>(number), up)) return exit_ok;
    err << "bmcsim: cannot write " << platform::host_nics_file() << '\n';
    return exit_failed;
}

int run_nics(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out);
    if (command == "link" && words.size() == 3) return link(self, words, err);
    return usage(self, err);
}

}  // namespace nics_commands

const area nics_area = {"nics", "show | link PORT up|down", nics_commands::run_nics};

}  // namespace bmcsim
