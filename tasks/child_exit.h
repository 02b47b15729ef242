// Waiting for a child process that this process started.
#pragma once

#include <sys/types.h>

namespace odata::redfish {

// The child's exit status once it has ended; -1 when it did not exit
// normally or cannot be waited for.
int wait_for_exit(pid_t child);

}  // namespace odata::redfish
