// bmcsim fans: the fan control mode and the duty it sets.
#include <ostream>

#include "platform/libfan.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace fans_commands {

constexpr const char* fan_modes[FAN_MODE_COUNT] = {"standard", "full-speed", "optimal", "heavy-io"};

int show(std::ostream& out, std::ostream& err) {
    const int mode = PltFAN_GetMode();
    const int duty = PltFAN_GetTargetDuty();
    if (mode < 0 || mode >= FAN_MODE_COUNT || duty < 0) {
        err << "bmcsim: cannot read the fan control\n";
        return exit_failed;
    }
    out << "mode=" << fan_modes[mode] << '\n' << "duty=" << duty << '\n';
    return exit_ok;
}

int run_fans(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    if (words.size() == 1 && words[0] == "show") return show(out, err);
    return usage(self, err);
}

}  // namespace fans_commands

const area fans_area = {"fans", "show", fans_commands::run_fans};

}  // namespace bmcsim
