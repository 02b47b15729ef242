// bmcsim bmc: the BMC's own firmware version and restarts.
#include <ostream>

#include "platform/libbmc.h"
#include "platform/sim/bmc_firmware.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace bmc_commands {

constexpr int version_size = 64;

int show(std::ostream& out) {
    char version[version_size] = "";
    UtilGetBmcFwVersion(version, sizeof version);
    out << "firmware=" << version << '\n' << "resets=" << platform::bmc_reset_count() << '\n';
    return exit_ok;
}

int run_bmc(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out);
    if (command == "version" && words.size() == 2) {
        if (platform::set_bmc_firmware_version(words[1])) return exit_ok;
        err << "bmcsim: cannot set version " << words[1] << '\n';
        return exit_failed;
    }
    if (command == "reset" && words.size() == 1) {
        if (PltBMC_Reset() == PLT_OK) return exit_ok;
        err << "bmcsim: the BMC did not restart cleanly\n";
        return exit_failed;
    }
    return usage(self, err);
}

}  // namespace bmc_commands

const area bmc_area = {"bmc", "show | version TEXT | reset", bmc_commands::run_bmc};

}  // namespace bmcsim
