// The simulated host interface, in the simulator settings (sim_settings.h):
// [HostInterface] Enabled=1 switches it on (default 0); Addresses lists,
// separated by blanks, the BMC's own addresses on it (default none): a
// request counts as coming over the host interface when it is on and the
// request arrived on one of them (SERVER_ADDR). FirmwareUser and
// FirmwarePassword (a salted hash) are the host firmware's credential
// (default none). HostMAC, HostAddress and HostSubnetMask describe the host's
// side of it (defaults 02:1a:2b:3c:4d:02, 169.254.0.18, 255.255.0.0).
#pragma once

#include <string>
#include <vector>

namespace platform {

bool set_host_interface(bool enabled);

// Addresses of at most 45 characters each, at most 8; an empty list clears
// them. False for a malformed list or when it cannot be stored.
bool set_host_interface_addresses(const std::vector<std::string>& addresses);
std::vector<std::string> host_interface_addresses();

// An empty name removes the credential.
bool set_host_firmware_credential(const std::string& name, const std::string& password);

// False for a malformed MAC address ("02:1a:2b:3c:4d:02"), IPv4 address or
// subnet mask, or when they cannot be stored.
bool set_host_interface_host_nic(const std::string& mac_address, const std::string& ipv4_address,
                                 const std::string& subnet_mask);

// The credential's name; empty when there is none.
std::string host_firmware_user();

}  // namespace platform
