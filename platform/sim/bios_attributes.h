// The simulated host BIOS's setup attributes. The BIOS writes their values
// to /tmp/attributes.json when it starts, after taking over the changes
// handed to it in /tmp/user_save_to_bios.json.
#pragma once

#include <string>

namespace platform {

// A host boot as far as the BIOS settings go: the pending changes that fit
// an attribute replace its value, every other attribute keeps its value
// (its default the first time), and the hand-over file is removed.
bool post_bios_settings();

}  // namespace platform
