// Host power as the Redfish PowerState property of the system and the chassis.
#pragma once

namespace odata::redfish {

// True only when the platform reports host power on (an unreadable state
// counts as off).
bool host_power_on();

// "On" or "Off"; no other value is ever reported.
const char* power_state_text();

}  // namespace odata::redfish
