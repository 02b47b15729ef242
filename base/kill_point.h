// Test hook: the environment variable BMC_KILL_AT, read once per process,
// names a step at which the process kills itself with SIGKILL, so that
// tests end a multi-step change at a chosen point instead of by timing
// luck. Unset on a BMC, where every step runs through.
#pragma once

#include <string_view>

namespace platform {

// Raises SIGKILL when step is the one that BMC_KILL_AT names.
void kill_point(std::string_view step);

}  // namespace platform
