// The simulated host's network ports: one OCP adapter with two 25 Gb/s
// ports, whose links are kept in <root>/var/bmc/host_nics.ini:
//
//   [Port<n>] Link=up|down (default: port 1 up, port 2 down)
#pragma once

#include <string>

namespace platform {

const std::string& host_nics_file();

// Port number 1-based; false when there is no such port or it is not stored.
bool set_host_port_link(int port_number, bool up);

}  // namespace platform
