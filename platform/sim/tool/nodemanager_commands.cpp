// bmcsim nodemanager: the power policies of the host's node manager.
#include <ostream>
#include <string>

#include "platform/sim/node_manager.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace nodemanager_commands {

int show(std::ostream& out) {
    St_NmPolicy policies[NM_MAX_POLICIES];
    const int count = NmGetPolicies(policies);
    for (int i = 0; i < count; ++i)
        out << "policy" << int(policies[i].policy_id) << ": " << policies[i].power_limit_watts
            << " W | " << (policies[i].enabled ? "on" : "off") << " | correction "
            << policies[i].correction_time_ms << " ms | period " << policies[i].reporting_period_s
            << " s\n";
    return exit_ok;
}

// add ID WATTS on|off [CORRECTION_MS PERIOD_S]
int add(const area& self, const arguments& words, std::ostream& err) {
    long long id = 0, watts = 0, correction = 6000, period = 10;
    const bool on = words[3] == "on";
    if ((!on && words[3] != "off") || !parse_number(words[1], 0, 255, id) ||
        !parse_number(words[2], 1, UINT16_MAX, watts) ||
        (words.size() == 6 && (!parse_number(words[4], 0, UINT32_MAX, correction) ||
                               !parse_number(words[5], 1, UINT16_MAX, period))))
        return usage(self, err);
    const St_NmPolicy policy{uint8_t(id), uint8_t(on ? 1 : 0), uint16_t(watts),
                             uint32_t(correction), uint16_t(period)};
    switch (platform::store_node_manager_policy(policy)) {
        case platform::policy_stored::stored:
            return exit_ok;
        case platform::policy_stored::full:
            err << "bmcsim: the node manager holds " << NM_MAX_POLICIES << " policies\n";
            return exit_failed;
        case platform::policy_stored::failed:
            break;
    }
    err << "bmcsim: cannot write " << platform::node_manager_file() << '\n';
    return exit_failed;
}

int run_nodemanager(const area& self, const arguments& words, std::ostream& out,
                    std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out);
    if (command == "add" && (words.size() == 4 || words.size() == 6)) return add(self, words, err);
    if (command == "clear" && words.size() == 1) {
        if (NmClearAllPolicies() == PLT_OK) return exit_ok;
        err << "bmcsim: cannot write " << platform::node_manager_file() << '\n';
        return exit_failed;
    }
    return usage(self, err);
}

}  // namespace nodemanager_commands

const area nodemanager_area = {"nodemanager",
                               "show | add ID WATTS on|off [CORRECTION_MS PERIOD_S] | clear",
                               nodemanager_commands::run_nodemanager};

}  // namespace bmcsim
