#include "platform/sim/process_identity.h"

#include <signal.h>

#include <cerrno>
#include <cstdio>
#include <sstream>

#include "platform/sim/sim_file.h"

namespace platform::sim {
namespace {

// Field 22 of the stat record of the process's main thread, counted after
// the command's closing ")"; 0 for a process that is gone or only waits to
// be reaped (state Z). The thread's record, not /proc/<pid>/stat: a program
// run under qemu-user reads its own process record as qemu makes it up.
unsigned long long start_time_of(pid_t pid) {
    const std::string id = std::to_string(pid);
    std::string stat;
    if (!read_file("/proc/" + id + "/task/" + id + "/stat", stat)) return 0;
    size_t after_command = stat.rfind(')');
    if (after_command == std::string::npos) return 0;
    std::istringstream fields(stat.substr(after_command + 1));
    std::string field;
    for (int index = 3; index < 22 && fields >> field; ++index) {
        if (index == 3 && field == "Z") return 0;
    }
    unsigned long long start = 0;
    fields >> start;
    return start;
}

}  // namespace

process_identity identify_process(pid_t pid) { return {pid, start_time_of(pid)}; }

bool process_alive(const process_identity& process) {
    if (process.pid <= 0) return false;
    if (::kill(process.pid, 0) != 0 && errno != EPERM) return false;
    const unsigned long long start = start_time_of(process.pid);
    return start != 0 && (process.start == 0 || start == process.start);
}

std::string format_process(const process_identity& process) {
    return std::to_string(process.pid) + " " + std::to_string(process.start);
}

process_identity parse_process(const std::string& text) {
    process_identity process;
    long long pid = 0;
    unsigned long long start = 0;
    char rest = 0;
    if (std::sscanf(text.c_str(), "%lld %llu%c", &pid, &start, &rest) == 2 && pid > 0 &&
        pid < (1LL << 31))
        process = {static_cast<pid_t>(pid), start};
    return process;
}

}  // namespace platform::sim
