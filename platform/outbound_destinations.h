// Where the BMC's own network clients (alert delivery, image downloads) may
// connect. They act for remote users, so they must not reach what only the
// BMC itself can reach: loopback, link-local (among them cloud metadata
// services at 169.254.169.254) and unspecified addresses, and the BMC's own
// LAN address. A BMC simulated on one host, whose receivers listen on
// loopback, allows them with
//
//   # <root>/nv/redfish/outbound.ini
//   [Destinations]
//   AllowLocal=1
#pragma once

#include <sys/socket.h>

#include <string>
#include <string_view>

namespace platform {

const std::string& outbound_settings_file();

// Whether the setting above is on.
bool local_destinations_allowed();

// Whether address, or the literal address or name host (IPv6 with or
// without brackets; "localhost" names), is one of those addresses. Other
// names are judged by the addresses they resolve to.
bool is_local_address(const sockaddr* address);
bool is_local_host(std::string_view host);

// The same, false while the setting allows them.
bool refused_address(const sockaddr* address);
bool refused_host(std::string_view host);

// A socket for a connection to address, or -1 when the address is refused.
int allowed_socket(int family, int type, int protocol, const sockaddr* address);

// The host part of a destination: "scheme://user@host:port/path",
// "host:port/path", "[v6]:port", "udp:host:port", a bare IPv6 address.
std::string destination_host(std::string_view destination);

// Whether host, or an address it resolves to now, is refused.
bool refused_after_lookup(std::string_view host);

}  // namespace platform
