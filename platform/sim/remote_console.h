// The simulated remote console's settings files (mouse mode, KVM session).
#pragma once

#include <string>
#include <vector>

namespace platform::sim {

std::vector<std::string> remote_console_files();

}  // namespace platform::sim
