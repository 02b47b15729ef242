#include "resources/chassis/power_state.h"

#include "platform/libipmi_chassis.h"

namespace odata::redfish {

bool host_power_on() { return PltCHASSIS_PowerStatus() == 1; }

const char* power_state_text() { return host_power_on() ? "On" : "Off"; }

}  // namespace odata::redfish
