// bmcsim ipfilter: the IP access control's switch and rules.
#include <ostream>

#include "platform/libipfilter.h"
#include "platform/sim/ip_filter.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace ipfilter_commands {

int show(std::ostream& out) {
    St_IpFilterConfig config;
    PltIPFILTER_GetConfig(&config);
    out << "enabled=" << (config.enabled ? "on" : "off") << '\n';
    for (int index = 0; index < IP_FILTER_RULE_COUNT; ++index) {
        const St_IpFilterRule& rule = config.rules[index];
        if (!rule.used) continue;
        out << index + 1 << ' ' << (rule.action == IP_FILTER_DENY ? "deny" : "allow") << ' '
            << platform::dotted_ipv4(rule.first) << '-' << platform::dotted_ipv4(rule.last) << '\n';
    }
    return exit_ok;
}

// add allow|deny FIRST [LAST]
int add(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    St_IpFilterRule rule{1, 0, 0, words[1] == "deny" ? IP_FILTER_DENY : IP_FILTER_ALLOW};
    const bool parsed = (words[1] == "allow" || words[1] == "deny") &&
                        platform::parse_ipv4(words[2], rule.first) &&
                        platform::parse_ipv4(words.size() == 4 ? words[3] : words[2], rule.last);
    const int index = parsed ? PltIPFILTER_AddRule(&rule) : PLT_ERR_ARGUMENT;
    if (index == PLT_ERR_ARGUMENT) return usage(self, err);
    if (index == PLT_ERR_STATE) {
        err << "bmcsim: all " << IP_FILTER_RULE_COUNT << " rules are in use\n";
        return exit_failed;
    }
    if (index < 0) return exit_failed;
    out << index + 1 << '\n';
    return exit_ok;
}

int remove(const area& self, const arguments& words, std::ostream& err) {
    long long id = 0;
    if (!parse_number(words[1], 1, IP_FILTER_RULE_COUNT, id)) return usage(self, err);
    const St_IpFilterRule unused{};
    if (PltIPFILTER_SetRule(static_cast<int>(id) - 1, &unused) == PLT_OK) return exit_ok;
    err << "bmcsim: cannot write " << platform::ip_filter_file() << '\n';
    return exit_failed;
}

int run_ipfilter(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out);
    if (command == "add" && (words.size() == 3 || words.size() == 4))
        return add(self, words, out, err);
    if (command == "delete" && words.size() == 2) return remove(self, words, err);
    if ((command != "on" && command != "off") || words.size() != 1) return usage(self, err);
    if (PltIPFILTER_SetEnabled(command == "on") == PLT_OK) return exit_ok;
    err << "bmcsim: cannot write " << platform::ip_filter_file() << '\n';
    return exit_failed;
}

}  // namespace ipfilter_commands

const area ipfilter_area = {"ipfilter", "show | on | off | add allow|deny FIRST [LAST] | delete N",
                            ipfilter_commands::run_ipfilter};

}  // namespace bmcsim
