// PATCH of the BMC's LAN interface: the request read into changes in one
// pass that collects messages, then applied to the LAN settings.
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>

#include "framework/property_checks.h"
#include "frontend/message.h"
#include "platform/liblan.h"

namespace odata::redfish {

// One entry of IPv4StaticAddresses; a missing member keeps its setting.
struct ipv4_static_address {
    std::optional<std::string> address;
    std::optional<std::string> subnet_mask;
    std::optional<std::string> gateway;
};

struct lan_changes {
    std::optional<std::string> host_name;
    std::optional<bool> dhcp_enabled;
    std::optional<ipv4_static_address> static_address;
};

lan_changes read_lan_changes(const boost::json::object& body, result_record& result);

// The BMC's host name of a request member (one DNS label), or a message.
std::optional<std::string> require_host_name(const request_member& member, result_record& result);

// The settings after the changes; messages for a combination that the
// interface cannot have (a static address while DHCP stays on, a gateway
// outside the subnet).
St_LanConfig changed_lan_config(const St_LanConfig& current, const lan_changes& changes,
                                result_record& result);

}  // namespace odata::redfish
