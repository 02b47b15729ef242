// The simulated remote console settings: the mouse mode in
// <root>/nv/bmc/mouse.ini ([Mouse] Mode=MOUSE_MODE_*, default absolute) and
// the session settings in <root>/nv/bmc/kvm.ini ([KVM] LocalMonitorOff=0|1,
// KeyboardLayout=KVM_KEYBOARD_*, TimeoutMinutes).
#include "platform/sim/remote_console.h"
#include "base/bmc_root.h"
#include "platform/libkvm.h"
#include "platform/sim/choice_setting.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

constexpr platform::sim::choice_setting mouse_mode = {"/nv/bmc/mouse.ini", "Mouse.Mode",
                                                      MOUSE_MODE_COUNT, MOUSE_MODE_ABSOLUTE};

constexpr int default_timeout_minutes = 30;

const std::string& kvm_file() {
    static platform::fixed_bmc_path path("/nv/bmc/kvm.ini");
    return path.get();
}

bool valid(const St_KvmConfig& config) {
    return config.local_monitor_off <= 1 && config.keyboard_layout < KVM_KEYBOARD_COUNT &&
           config.timeout_minutes >= 1 && config.timeout_minutes <= KVM_TIMEOUT_MINUTES_MAX;
}

}  // namespace

std::vector<std::string> platform::sim::remote_console_files() {
    return {choice_setting_file(mouse_mode), kvm_file()};
}

extern "C" int PltKVM_GetMouseMode(void) { return platform::sim::read_choice(mouse_mode); }

extern "C" int PltKVM_SetMouseMode(int mode) {
    return platform::sim::write_choice(mouse_mode, mode);
}

extern "C" int PltKVM_GetConfig(St_KvmConfig* config) {
    if (!config) return PLT_ERR_ARGUMENT;
    const std::shared_ptr<const pt::ptree> state = platform::sim::stored_state_ini(kvm_file());
    St_KvmConfig stored{};
    stored.local_monitor_off = state->get("KVM.LocalMonitorOff", 0) != 0;
    stored.keyboard_layout = static_cast<uint8_t>(state->get("KVM.KeyboardLayout", 0));
    stored.timeout_minutes = static_cast<uint16_t>(state->get("KVM.TimeoutMinutes", 0));
    const St_KvmConfig shipped{0, KVM_KEYBOARD_US, default_timeout_minutes};
    *config = valid(stored) ? stored : shipped;
    return PLT_OK;
}

extern "C" int PltKVM_SetConfig(const St_KvmConfig* config) {
    if (!config || !valid(*config)) return PLT_ERR_ARGUMENT;
    const bool written = platform::sim::update_state_ini(kvm_file(), [&](pt::ptree& state) {
        state.put("KVM.LocalMonitorOff", config->local_monitor_off ? 1 : 0);
        state.put("KVM.KeyboardLayout", static_cast<int>(config->keyboard_layout));
        state.put("KVM.TimeoutMinutes", config->timeout_minutes);
        return true;
    });
    return written ? PLT_OK : PLT_ERR_IO;
}
