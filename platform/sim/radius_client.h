// The simulated RADIUS client's settings, <root>/nv/bmc/radius.ini (mode
// 0600: it holds the shared secret as the client must send it):
//
//   [RADIUS] Enabled=0|1, Server, Port (default 1812), TimeoutSeconds
//            (default 5), Secret
//
// RADIUS is a directory that accepts logins only while it is enabled and
// has a server.
#pragma once

#include <string>

namespace platform {

const std::string& radius_settings_file();

// Enabled with a server.
bool radius_directory_enabled();

// The switch alone, as the BMC's own tools set it; false when not stored.
bool set_radius_enabled(bool enabled);

// The server alone (a host name or address that fits the setting); false
// when it does not fit or is not stored.
bool set_radius_server(const std::string& server);

}  // namespace platform
