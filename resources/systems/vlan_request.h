// The body of a VLAN's creation (POST) or change (PATCH), validated in one
// pass: VLANId from 0 to 4094 (required to create), VLANEnable a boolean.
#pragma once

#include <boost/json.hpp>
#include <cstdint>
#include <optional>

namespace odata::redfish {

struct vlan_request {
    std::optional<uint16_t> vlan_id;
    std::optional<bool> enabled;
};

// Throws 400 with every message when the body is refused.
vlan_request read_vlan_request(const boost::json::value& body, bool creating);

}  // namespace odata::redfish
