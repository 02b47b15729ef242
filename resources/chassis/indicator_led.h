// The identify light as the Redfish IndicatorLED property of the system and
// the chassis: one reading, one value set, one way to set it.
#pragma once

#include <string>
#include <vector>

namespace odata::redfish {

// The values IndicatorLED takes: "Lit", "Blinking", "Off".
const std::vector<std::string>& indicator_led_values();

// Exact, case-sensitive.
bool is_indicator_led_value(const std::string& value);

// "Blinking", "Lit" or "Off" from the identify fields of the shared state.
const char* indicator_led_state();

// Sets the light to one of indicator_led_values(); PLT_OK or the platform's
// failure code (PLT_ERR_ARGUMENT for any other value).
int set_indicator_led(const std::string& value);

}  // namespace odata::redfish
