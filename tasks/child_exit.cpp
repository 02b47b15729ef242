#include "tasks/child_exit.h"

#include <sys/wait.h>

#include <cerrno>

namespace odata::redfish {

int wait_for_exit(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) return -1;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace odata::redfish
