#include "platform/sim/choice_setting.h"

#include "base/bmc_root.h"
#include "platform/plt_result.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace platform::sim {

std::string choice_setting_file(const choice_setting& setting) { return bmc_path(setting.file); }

int read_choice(const choice_setting& setting) {
    const std::shared_ptr<const pt::ptree> state = stored_state_ini(choice_setting_file(setting));
    const int value = state->get(setting.key, setting.fallback);
    return value >= 0 && value < setting.count ? value : setting.fallback;
}

int write_choice(const choice_setting& setting, int value) {
    if (value < 0 || value >= setting.count) return PLT_ERR_ARGUMENT;
    const bool written = update_state_ini(choice_setting_file(setting), [&](pt::ptree& state) {
        state.put(setting.key, value);
        return true;
    });
    return written ? PLT_OK : PLT_ERR_IO;
}

}  // namespace platform::sim
