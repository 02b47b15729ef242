#include "platform/sim/session_audit.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <memory>

#include "base/bmc_root.h"
#include "platform/libipmi.h"
#include "platform/libipmi_users.h"
#include "platform/session_record.h"
#include "platform/sim/bounded_log.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/user_table.h"

namespace {

std::string printable(const char* text) {
    std::string result = text ? text : "";
    for (char& c : result)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
    return result;
}

// Whether the regular file at path holds a session record of the user with
// this slot and record key.
bool record_of(const std::string& path, int slot, uint32_t key) {
    platform::sim::unique_fd fd(
        ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    struct stat status;
    if (!fd.valid() || ::fstat(fd.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size < static_cast<off_t>(sizeof(St_RedfishSession)))
        return false;
    St_RedfishSession record;
    if (::pread(fd.get(), &record, sizeof record, 0) != static_cast<ssize_t>(sizeof record))
        return false;
    return record.account_slot == slot && record.account_key == key;
}

}  // namespace

namespace platform {

const std::string& session_audit_file() {
    static fixed_bmc_path path("/var/log/session_audit.log");
    return path.get();
}

}  // namespace platform

// Every Basic request logs in: the directory is made only when missing.
extern "C" int UtilSessionAduit(const char* name, const char* client_ip, int login) {
    const platform::sim::bounded_log log{platform::session_audit_file(),
                                         platform::max_session_audit_bytes, 0600};
    const std::string line = std::to_string(lx_time_get()) + (login ? " login" : " logout") +
                             " user=" + printable(name) + " address=" + printable(client_ip) + '\n';
    if (platform::sim::append_line(log, line)) return 0;
    return platform::sim::make_parent_dirs(log.path) && platform::sim::append_line(log, line) ? 0
                                                                                              : -1;
}

// Some record <root>/tmp/redfish_* belongs to the slot's current user (the
// records are read; their file names prove nothing).
extern "C" int UtilIsUserActivateSession(int slot) {
    const uint32_t key = platform::user_slot_key(slot);
    if (key == 0) return 0;
    std::string directory = platform::bmc_path("/tmp");
    std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(directory.c_str()), ::closedir);
    if (!listing) return 0;
    while (const dirent* entry = ::readdir(listing.get())) {
        if (std::strncmp(entry->d_name, "redfish_", 8) == 0 &&
            record_of(directory + '/' + entry->d_name, slot, key))
            return 1;
    }
    return 0;
}
