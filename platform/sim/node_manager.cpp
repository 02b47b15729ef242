#include "platform/sim/node_manager.h"

#include "base/bmc_root.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

std::string policy_section(int id) { return "Policy" + std::to_string(id); }

// The policy of a section; false for a section that holds none.
bool stored_policy(const pt::ptree& state, int id, St_NmPolicy& policy) {
    const auto section = state.get_child_optional(policy_section(id));
    if (!section) return false;
    policy = {static_cast<uint8_t>(id), section->get<int>("Enabled", 0) ? uint8_t(1) : uint8_t(0),
              section->get<uint16_t>("PowerLimitWatts", 0),
              section->get<uint32_t>("CorrectionTimeMs", 0),
              section->get<uint16_t>("ReportingPeriodSeconds", 0)};
    return true;
}

int read_policies(const pt::ptree& state, St_NmPolicy* policies) {
    int count = 0;
    for (int id = 0; id <= 255 && count < NM_MAX_POLICIES; ++id)
        if (stored_policy(state, id, policies[count])) ++count;
    return count;
}

}  // namespace

namespace platform {

const std::string& node_manager_file() {
    static fixed_bmc_path path("/var/bmc/node_manager.ini");
    return path.get();
}

policy_stored store_node_manager_policy(const St_NmPolicy& policy) {
    bool full = false;
    const bool written = sim::update_state_ini(node_manager_file(), [&](pt::ptree& state) {
        St_NmPolicy policies[NM_MAX_POLICIES];
        const std::string section = policy_section(policy.policy_id);
        full =
            !state.get_child_optional(section) && read_policies(state, policies) >= NM_MAX_POLICIES;
        if (full) return false;
        pt::ptree& stored = state.put_child(section, pt::ptree());
        stored.put("Enabled", policy.enabled ? 1 : 0);
        stored.put("PowerLimitWatts", policy.power_limit_watts);
        stored.put("CorrectionTimeMs", policy.correction_time_ms);
        stored.put("ReportingPeriodSeconds", policy.reporting_period_s);
        return true;
    });
    if (full) return policy_stored::full;
    return written ? policy_stored::stored : policy_stored::failed;
}

}  // namespace platform

extern "C" int NmGetPolicies(St_NmPolicy* policies) {
    if (!policies) return PLT_ERR_ARGUMENT;
    return read_policies(*platform::sim::stored_state_ini(platform::node_manager_file()), policies);
}

extern "C" int NmClearAllPolicies(void) {
    const bool written =
        platform::sim::update_state_ini(platform::node_manager_file(), [](pt::ptree& state) {
            state.clear();
            return true;
        });
    return written ? PLT_OK : PLT_ERR_IO;
}
