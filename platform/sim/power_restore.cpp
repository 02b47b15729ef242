// The simulated power restore policy, <root>/nv/bmc/power_restore.ini:
// [Power] RestorePolicy=0|1|2 (POWER_RESTORE_*; default always off).
#include "platform/libipmi_chassis.h"
#include "platform/sim/choice_setting.h"

namespace {

constexpr platform::sim::choice_setting restore_policy = {
    "/nv/bmc/power_restore.ini", "Power.RestorePolicy", POWER_RESTORE_ALWAYS_ON + 1,
    POWER_RESTORE_ALWAYS_OFF};

}  // namespace

extern "C" int PltCHASSIS_GetRestorePolicy(void) {
    return platform::sim::read_choice(restore_policy);
}

extern "C" int PltCHASSIS_SetRestorePolicy(int policy) {
    return platform::sim::write_choice(restore_policy, policy);
}
