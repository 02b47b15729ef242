// bmcsim clock: the BMC's real-time clock, set to any moment for tests of
// the years from 2038 on.
#include <ctime>
#include <ostream>

#include "base/utc_time.h"
#include "platform/libipmi.h"
#include "platform/sim/bmc_time.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace clock_commands {

// "2040-02-29T12:00:00Z" (or "+00:00"), or seconds since the epoch.
bool parse_moment(const std::string& text, long long& seconds) {
    std::tm parts{};
    const char* end = strptime(text.c_str(), "%Y-%m-%dT%H:%M:%S", &parts);
    if (!end) return parse_number(text, 0, 253402300799LL, seconds);
    if (std::string(end) != "Z" && std::string(end) != "+00:00") return false;
    seconds = static_cast<long long>(timegm(&parts));
    return seconds >= 0;
}

int run_clock(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) {
        out << "time=" << platform::utc_timestamp(lx_time_get()) << '\n';
        return exit_ok;
    }
    long long seconds = 0;
    bool written = false;
    if (command == "set" && words.size() == 2 && parse_moment(words[1], seconds))
        written = platform::sim::set_bmc_clock(seconds);
    else if (command == "reset" && words.size() == 1)
        written = platform::sim::reset_bmc_clock();
    else
        return usage(self, err);
    if (written) return exit_ok;
    err << "bmcsim: cannot write " << platform::sim::clock_settings_file() << '\n';
    return exit_failed;
}

}  // namespace clock_commands

const area clock_area = {"clock", "show | set YYYY-MM-DDTHH:MM:SSZ|SECONDS | reset",
                         clock_commands::run_clock};

}  // namespace bmcsim
