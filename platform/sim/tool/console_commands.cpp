// bmcsim console: the remote console's mouse mode and session settings.
#include <ostream>

#include "platform/libkvm.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace console_commands {

constexpr const char* mouse_modes[MOUSE_MODE_COUNT] = {"absolute", "relative", "single"};
constexpr const char* keyboards[KVM_KEYBOARD_COUNT] = {"english", "german", "french", "japanese"};

int show(std::ostream& out, std::ostream& err) {
    const int mode = PltKVM_GetMouseMode();
    St_KvmConfig config;
    if (mode < 0 || mode >= MOUSE_MODE_COUNT || PltKVM_GetConfig(&config) != PLT_OK) {
        err << "bmcsim: cannot read the remote console settings\n";
        return exit_failed;
    }
    out << "mouse=" << mouse_modes[mode] << '\n'
        << "local_monitor_off=" << (config.local_monitor_off ? "yes" : "no") << '\n'
        << "keyboard=" << keyboards[config.keyboard_layout] << '\n'
        << "timeout_minutes=" << config.timeout_minutes << '\n';
    return exit_ok;
}

int run_console(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    if (words.size() == 1 && words[0] == "show") return show(out, err);
    return usage(self, err);
}

}  // namespace console_commands

const area console_area = {"console", "show", console_commands::run_console};

}  // namespace bmcsim
