// The simulated host interface, in the simulator settings (sim_settings.h):
// [HostInterface] Enabled=1 makes every request count as coming over the
// host interface (default 0: none does); FirmwareUser and FirmwarePassword
// (a salted hash) are the host firmware's credential (default none).
#pragma once

#include <string>

namespace platform {

bool set_host_interface(bool enabled);

// An empty name removes the credential.
bool set_host_firmware_credential(const std::string& name, const std::string& password);

// The credential's name; empty when there is none.
std::string host_firmware_user();

}  // namespace platform
