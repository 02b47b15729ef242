#include "update/firmware_flash.h"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <cerrno>

#include "platform/bmc_root.h"
#include "platform/libfwupdate.h"
#include "tasks/child_exit.h"

namespace odata::redfish {
namespace {

constexpr size_t max_output = 1024;

// What the program wrote, bounded; the descriptor is closed.
std::string read_output(int fd) {
    std::string output;
    char buffer[256];
    for (;;) {
        const ssize_t got = ::read(fd, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        if (output.size() < max_output) output.append(buffer, static_cast<size_t>(got));
    }
    ::close(fd);
    while (!output.empty() && (output.back() == '\n' || output.back() == '\r')) output.pop_back();
    return output.substr(output.rfind('\n') + 1);
}

}  // namespace

bool flash_image(int device, const std::string& image, std::string& reason) {
    int output[2];
    if (::pipe2(output, O_CLOEXEC) != 0) {
        reason = "fw_update cannot be started";
        return false;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output[1], 1);
    posix_spawn_file_actions_adddup2(&actions, output[1], 2);
    const std::string program = fw_update_program();
    const std::string device_text = std::to_string(device);
    const std::string root = "BMC_ROOT=" + platform::bmc_root();
    const char* argv[] = {
        program.c_str(), "-d", device_text.c_str(), "-f", image.c_str(), "-p", "1", nullptr};
    const char* envp[] = {root.c_str(), "PATH=/usr/sbin:/usr/bin:/sbin:/bin", nullptr};
    pid_t pid = -1;
    const int spawned = posix_spawn(&pid, program.c_str(), &actions, nullptr,
                                    const_cast<char* const*>(argv), const_cast<char* const*>(envp));
    posix_spawn_file_actions_destroy(&actions);
    ::close(output[1]);
    const std::string said = read_output(output[0]);
    if (spawned != 0) {
        reason = "fw_update cannot be started";
        return false;
    }
    if (wait_for_exit(pid) == 0) return true;
    reason = said.empty() ? "fw_update failed" : said;
    return false;
}

}  // namespace odata::redfish
