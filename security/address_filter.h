// The IP access control applied to every request, by the client's own
// address (REMOTE_ADDR). While it is on, the first rule (in table order)
// whose range holds an IPv4 address decides; an address that no rule holds
// passes only while no rule allows (then the rules are a deny list). The
// BMC's own loopback address (127.0.0.1, ::1) always passes, so that its
// local tools are never shut out; other 127.x.y.z addresses are filtered.
#pragma once

#include <string_view>

#include "platform/libipfilter.h"

namespace odata::redfish {

bool address_passes(const St_IpFilterConfig& config, std::string_view address);

// Whether the current request's client address passes config.
bool client_passes(const St_IpFilterConfig& config);

// Throws 403 AccessDenied (naming uri) when the current request's client
// address does not pass; 500 when the rules cannot be read.
void check_client_address(const std::string& uri);

}  // namespace odata::redfish
