// The simulated host interface, in the simulator settings (sim_settings.h):
// [HostInterface] Enabled=1 switches it on (default 0); Addresses lists,
// separated by blanks, the BMC's own addresses on it (default none): a
// request counts as coming over the host interface when it is on and the
// request arrived on one of them (SERVER_ADDR). FirmwareUser and
// FirmwarePassword (a salted hash) are the host firmware's credential
// (default none).
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

// The credential's name; empty when there is none.
std::string host_firmware_user();

}  // namespace platform
