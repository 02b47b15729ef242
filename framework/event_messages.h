// The messages that the BMC's own events carry, the registry Event.1.0.0
// ("Event.1.0.<key>").
#pragma once

#include <string_view>
#include <vector>

namespace odata::redfish {

struct event_message {
    std::string_view key;  // "HostPowerOn"
    std::string_view severity;
    std::string_view message;  // "%1", "%2" name the arguments
    std::string_view resolution;
};

inline constexpr std::string_view event_registry_prefix = "Event.1.0.";

const std::vector<event_message>& event_messages();

}  // namespace odata::redfish
