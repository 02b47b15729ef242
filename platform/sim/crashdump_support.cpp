#include "platform/sim/crashdump_support.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "base/bmc_root.h"
#include "platform/libipmi.h"
#include "platform/sim/sim_file.h"

namespace platform {

const std::string& crashdump_flag_file() {
    static fixed_bmc_path path("/var/bmc/crashdump_supported");
    return path.get();
}

bool set_crashdump_supported(bool supported) {
    std::string path = crashdump_flag_file();
    if (!supported) return ::unlink(path.c_str()) == 0 || errno == ENOENT;
    if (!sim::make_parent_dirs(path)) return false;
    sim::unique_fd fd(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    return fd.valid();
}

}  // namespace platform

extern "C" int is_ACD_crashdump_supported(void) {
    return ::access(platform::crashdump_flag_file().c_str(), F_OK) == 0 ? 1 : 0;
}
