#include "tasks/subscription_vocabulary.h"

#include "platform/libalert.h"

namespace odata::redfish {
namespace {

// E-mail carries the Redfish event document, so SMTP counts as RedfishEvent.
constexpr subscription_protocol protocols[] = {
    {"Redfish", ALERT_DEST_REDFISH, "RedfishEvent"},
    {"SNMPv2c", ALERT_DEST_SNMP_TRAP, "SNMPTrap"},
    {"SNMPv3", ALERT_DEST_SNMPV3_TRAP, "SNMPTrap"},
    {"SMTP", ALERT_DEST_SMTP, "RedfishEvent"},
};

}  // namespace

const subscription_protocol* protocol_named(std::string_view protocol) {
    for (const subscription_protocol& each : protocols)
        if (each.protocol == protocol) return &each;
    return nullptr;
}

const subscription_protocol* protocol_of_type(int destination_type) {
    for (const subscription_protocol& each : protocols)
        if (each.destination_type == destination_type) return &each;
    return nullptr;
}

const std::vector<event_type_name>& event_types() {
    static const std::vector<event_type_name> names = {
        {"StatusChange", ALERT_EVENT_STATUS_CHANGE},
        {"ResourceUpdated", ALERT_EVENT_RESOURCE_UPDATED},
        {"ResourceAdded", ALERT_EVENT_RESOURCE_ADDED},
        {"ResourceRemoved", ALERT_EVENT_RESOURCE_REMOVED},
        {"Alert", ALERT_EVENT_ALERT},
    };
    return names;
}

std::vector<std::string_view> event_type_names() {
    std::vector<std::string_view> names;
    for (const event_type_name& each : event_types()) names.push_back(each.name);
    return names;
}

std::optional<int> event_type_bit(std::string_view name) {
    for (const event_type_name& each : event_types())
        if (each.name == name) return each.bit;
    return std::nullopt;
}

}  // namespace odata::redfish
