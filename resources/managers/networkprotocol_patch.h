// PATCH of the BMC's network services: the request read into changes in
// one pass that collects messages, then checked as a whole.
#pragma once

#include <array>
#include <boost/json.hpp>
#include <optional>
#include <string>

#include "frontend/message.h"
#include "platform/liblan.h"

namespace odata::redfish {

struct network_protocol {
    const char* name;  // the resource's property
    int service;       // NET_SERVICE_*
};

inline constexpr network_protocol network_protocols[] = {
    {"HTTP", NET_SERVICE_HTTP}, {"HTTPS", NET_SERVICE_HTTPS}, {"IPMI", NET_SERVICE_IPMI},
    {"SSH", NET_SERVICE_SSH},   {"NTP", NET_SERVICE_NTP},     {"SNMP", NET_SERVICE_SNMP},
};

struct service_change {
    std::optional<bool> enabled;
    std::optional<int> port;
};

struct network_protocol_changes {
    std::optional<std::string> host_name;
    std::array<service_change, NET_SERVICE_COUNT> services;
};

network_protocol_changes read_network_protocol_changes(const boost::json::object& body,
                                                       result_record& result);

// The services after the changes; messages for two enabled services on one
// port, and for turning off both HTTP and HTTPS (the way in).
std::array<St_NetService, NET_SERVICE_COUNT> changed_services(
    const std::array<St_NetService, NET_SERVICE_COUNT>& current,
    const network_protocol_changes& changes, result_record& result);

}  // namespace odata::redfish
