// The names a subscription is written with: protocols and their
// destination types, event types and their bits.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace odata::redfish {

struct subscription_protocol {
    std::string_view protocol;           // "Redfish", "SNMPv2c", "SNMPv3", "SMTP"
    int destination_type;                // ALERT_DEST_*
    std::string_view subscription_type;  // "RedfishEvent", "SNMPTrap"
};

const subscription_protocol* protocol_named(std::string_view protocol);
// The protocol of a destination type; null for a type it does not know.
const subscription_protocol* protocol_of_type(int destination_type);

struct event_type_name {
    std::string_view name;  // "StatusChange", ...
    int bit;                // ALERT_EVENT_*
};

// The event types in the order EventTypesForSubscription lists them.
const std::vector<event_type_name>& event_types();

// Their names alone, in that order.
std::vector<std::string_view> event_type_names();

std::optional<int> event_type_bit(std::string_view name);

}  // namespace odata::redfish
