// The event registry Event.1.0.0 that the Redfish service publishes in its
// served tree (/tmp/www/registries/Event.1.0.0.json). The service owns the
// registry; the messages of the events that the BMC raises itself (task
// store, logged alerts) are read from it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform::sim {

struct published_message {
    std::string message_id;  // "Event.1.0.HostPowerOn"
    std::string severity;
    std::string message;  // "%1", "%2" name the arguments
};

std::string published_event_registry_file();

// The message of key; none when the registry is not published or lacks it.
std::optional<published_message> published_event_message(std::string_view key);

}  // namespace platform::sim
