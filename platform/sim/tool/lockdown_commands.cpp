// bmcsim lockdown: the system lockdown switch.
#include <ostream>

#include "platform/libipmi_users.h"
#include "platform/sim/sim_settings.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace lockdown_commands {

int run_lockdown(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (words.size() != 1) return usage(self, err);
    if (command == "show") {
        out << (GetSetSysLockdownEnable(0, 0) ? "on" : "off") << '\n';
        return exit_ok;
    }
    if (command != "on" && command != "off") return usage(self, err);
    if (GetSetSysLockdownEnable(1, command == "on") == 0) return exit_ok;
    err << "bmcsim: cannot write " << platform::sim_settings_file() << '\n';
    return exit_failed;
}

}  // namespace lockdown_commands

const area lockdown_area = {"lockdown", "on | off | show", lockdown_commands::run_lockdown};

}  // namespace bmcsim
