#include "platform/sim/ip_filter.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <memory>

#include "base/bmc_root.h"
#include "base/file_cache.h"
#include "platform/libipfilter.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

std::string rule_section(int index) { return "Rule" + std::to_string(index + 1); }

bool valid_rule(const St_IpFilterRule& rule) {
    return !rule.used || (rule.first <= rule.last && rule.action <= IP_FILTER_DENY);
}

// A rule that is missing, or malformed in any part, is unused.
St_IpFilterRule stored_rule(const pt::ptree& state, int index) {
    St_IpFilterRule rule{};
    const auto section = state.get_child_optional(rule_section(index));
    if (!section) return rule;
    const std::string action = section->get("Action", "");
    rule.action = action == "Deny" ? IP_FILTER_DENY : IP_FILTER_ALLOW;
    rule.used = platform::parse_ipv4(section->get("First", ""), rule.first) &&
                platform::parse_ipv4(section->get("Last", ""), rule.last) &&
                (action == "Allow" || action == "Deny") && rule.first <= rule.last;
    return rule;
}

void put_rule(pt::ptree& state, int index, const St_IpFilterRule& rule) {
    state.erase(rule_section(index));
    if (!rule.used) return;
    pt::ptree& section = state.put_child(rule_section(index), pt::ptree());
    section.put("First", platform::dotted_ipv4(rule.first));
    section.put("Last", platform::dotted_ipv4(rule.last));
    section.put("Action", rule.action == IP_FILTER_DENY ? "Deny" : "Allow");
}

}  // namespace

namespace platform {

const std::string& ip_filter_file() {
    static fixed_bmc_path path("/nv/bmc/ipfilter.ini");
    return path.get();
}

std::string dotted_ipv4(uint32_t address) {
    in_addr network{htonl(address)};
    char text[INET_ADDRSTRLEN] = "";
    inet_ntop(AF_INET, &network, text, sizeof text);
    return text;
}

bool parse_ipv4(const std::string& text, uint32_t& address) {
    in_addr network{};
    if (inet_pton(AF_INET, text.c_str(), &network) != 1) return false;
    address = ntohl(network.s_addr);
    return true;
}

}  // namespace platform

// Every request asks for the filter: parsed once per version of the file.
extern "C" int PltIPFILTER_GetConfig(St_IpFilterConfig* config) {
    if (!config) return PLT_ERR_ARGUMENT;
    static platform::file_cache<St_IpFilterConfig> cache;
    std::shared_ptr<const St_IpFilterConfig> stored;
    cache.get(
        platform::ip_filter_file(),
        [](St_IpFilterConfig& parsed) {
            const pt::ptree state = platform::sim::read_state_ini(platform::ip_filter_file());
            parsed.enabled = state.get("Filter.Enabled", 0) != 0;
            for (int index = 0; index < IP_FILTER_RULE_COUNT; ++index)
                parsed.rules[index] = stored_rule(state, index);
            return PLT_OK;
        },
        stored);
    *config = *stored;
    return PLT_OK;
}

extern "C" int PltIPFILTER_SetEnabled(int enabled) {
    const bool written =
        platform::sim::update_state_ini(platform::ip_filter_file(), [&](pt::ptree& state) {
            state.put("Filter.Enabled", enabled ? 1 : 0);
            return true;
        });
    return written ? PLT_OK : PLT_ERR_IO;
}

extern "C" int PltIPFILTER_AddRule(const St_IpFilterRule* rule) {
    if (!rule || !rule->used || !valid_rule(*rule)) return PLT_ERR_ARGUMENT;
    int added = PLT_ERR_STATE;
    const bool written =
        platform::sim::update_state_ini(platform::ip_filter_file(), [&](pt::ptree& state) {
            for (int index = 0; index < IP_FILTER_RULE_COUNT; ++index) {
                if (stored_rule(state, index).used) continue;
                put_rule(state, index, *rule);
                added = index;
                return true;
            }
            return false;
        });
    return written ? added : PLT_ERR_IO;
}

extern "C" int PltIPFILTER_SetRule(int index, const St_IpFilterRule* rule) {
    if (!rule || !valid_rule(*rule)) return PLT_ERR_ARGUMENT;
    if (index < 0 || index >= IP_FILTER_RULE_COUNT) return PLT_ERR_NOT_FOUND;
    const bool written =
        platform::sim::update_state_ini(platform::ip_filter_file(), [&](pt::ptree& state) {
            put_rule(state, index, *rule);
            return true;
        });
    return written ? PLT_OK : PLT_ERR_IO;
}
