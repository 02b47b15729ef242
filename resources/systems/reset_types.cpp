#include "resources/systems/reset_types.h"

#include <algorithm>

#include "platform/libipmi.h"
#include "platform/libipmi_chassis.h"

namespace odata::redfish {
namespace {

// GracefulRestart is a power cycle, not a soft shutdown followed by
// power-on; On and ForceOn are the same call.
int power_cycle() { return PltCHASSIS_PowerCycle(at_p_St_GlobalVar->power_cycle_byte); }

}  // namespace

const std::vector<reset_type>& reset_types() {
    static const std::vector<reset_type> table = {
        {"On", PltCHASSIS_PowerUp},
        {"ForceOff", PltCHASSIS_PowerDown},
        {"GracefulShutdown", PltCHASSIS_SoftShutdown},
        {"GracefulRestart", power_cycle},
        {"ForceRestart", PltCHASSIS_PowerReset},
        {"Nmi", PltCHASSIS_PulseDiagnosticInterrupt},
        {"ForceOn", PltCHASSIS_PowerUp},
    };
    return table;
}

const reset_type* find_reset_type(std::string_view name) {
    const auto& table = reset_types();
    auto found = std::find_if(table.begin(), table.end(),
                              [name](const reset_type& entry) { return entry.name == name; });
    return found == table.end() ? nullptr : &*found;
}

const std::vector<std::string_view>& reset_type_names() {
    static const std::vector<std::string_view> names = [] {
        std::vector<std::string_view> list;
        for (const reset_type& entry : reset_types()) list.push_back(entry.name);
        return list;
    }();
    return names;
}

}  // namespace odata::redfish
