// The BMC's names in DNS, as its LAN settings give them.
#pragma once

#include <boost/json.hpp>
#include <string>

#include "platform/liblan.h"

namespace odata::redfish {

// "bmc.localdomain"; the host name alone while there is no domain.
std::string lan_fqdn(const St_LanConfig& lan);

// The name servers in use, in order.
boost::json::array lan_name_servers(const St_LanConfig& lan);

}  // namespace odata::redfish
