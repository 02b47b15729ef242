// The simulated update mode: <root>/tmp/fw_updating holds its holder's
// line (see holder_alive) and the component's name.
#pragma once

#include <string>

namespace platform::sim {

const std::string& update_mode_file();

// Marks update mode for holder unless another live holder has it: 0 when
// marked, -1 while held, -2 when the marker cannot be written.
int mark_update_mode(const std::string& holder, const std::string& component);

}  // namespace platform::sim
