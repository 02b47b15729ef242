// bmcsim crashdump: whether the host supports crash dumps.
#include <ostream>

#include "platform/libipmi.h"
#include "platform/sim/crashdump_support.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace crashdump_commands {

int set_supported(bool supported, std::ostream& err) {
    if (platform::set_crashdump_supported(supported)) return exit_ok;
    err << "bmcsim: cannot change " << platform::crashdump_flag_file() << '\n';
    return exit_failed;
}

int run_crashdump(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (words.size() != 1) return usage(self, err);
    if (command == "enable") return set_supported(true, err);
    if (command == "disable") return set_supported(false, err);
    if (command == "show") {
        out << (is_ACD_crashdump_supported() ? "enabled" : "disabled") << '\n';
        return exit_ok;
    }
    return usage(self, err);
}

}  // namespace crashdump_commands

const area crashdump_area = {"crashdump", "enable | disable | show",
                             crashdump_commands::run_crashdump};

}  // namespace bmcsim
