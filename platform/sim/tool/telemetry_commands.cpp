// bmcsim telemetry: the host's power-consumption history.
#include <ostream>
#include <string>
#include <vector>

#include "platform/libipmi_power.h"
#include "platform/sim/power_history.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace telemetry_commands {

// "last_minute=N", then "MINUTE WATTS" per sample, oldest first, as the
// service reads them.
int show(std::ostream& out, std::ostream& err) {
    std::vector<St_PowerSample> samples(POWER_HISTORY_MINUTES);
    int count = 0;
    uint32_t last_minute = 0;
    if (PltPSU_GetPowerHistory(samples.data(), POWER_HISTORY_MINUTES, &count, &last_minute) !=
        PLT_OK) {
        err << "bmcsim: cannot read the power history\n";
        return exit_failed;
    }
    out << "last_minute=" << last_minute << '\n';
    for (int i = 0; i < count; ++i) out << samples[i].minute << ' ' << samples[i].watts << '\n';
    return exit_ok;
}

// "add-samples MINUTES_AGO WATTS...": the first sample MINUTES_AGO minutes
// before the present one, the next a minute later.
int add_samples(const area& self, const arguments& words, std::ostream& err) {
    long long minutes_ago = 0;
    const auto count = static_cast<long long>(words.size() - 2);
    if (!parse_number(words[1], count, POWER_HISTORY_MINUTES, minutes_ago)) return usage(self, err);
    std::vector<uint16_t> watts;
    for (std::size_t i = 2; i < words.size(); ++i) {
        long long value = 0;
        if (!parse_number(words[i], 0, 65535, value)) return usage(self, err);
        watts.push_back(static_cast<uint16_t>(value));
    }
    return written(platform::add_power_samples(static_cast<uint32_t>(minutes_ago), watts),
                   platform::power_history_file(), err);
}

int run_telemetry(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out, err);
    if (command == "add-samples" && words.size() >= 3 && words.size() <= 2 + POWER_HISTORY_MINUTES)
        return add_samples(self, words, err);
    if (command == "clear" && words.size() == 1)
        return written(platform::clear_power_history(), platform::power_history_file(), err);
    return usage(self, err);
}

}  // namespace telemetry_commands

const area telemetry_area = {"telemetry", "show | add-samples MINUTES_AGO WATTS... | clear",
                             telemetry_commands::run_telemetry};

}  // namespace bmcsim
