// System lockdown: [Lockdown] Enabled in the simulator settings
// (sim_settings.h), default 0.
#include "platform/libipmi_users.h"
#include "platform/sim/sim_settings.h"

// set 0: the state (0 or 1); set 1: stores value (non-zero is 1), 0 on
// success.
extern "C" int GetSetSysLockdownEnable(int set, int value) {
    if (!set) return platform::sim_setting_number("Lockdown.Enabled", 0) != 0 ? 1 : 0;
    return platform::set_sim_setting("Lockdown.Enabled", value ? "1" : "0") ? 0 : -1;
}
