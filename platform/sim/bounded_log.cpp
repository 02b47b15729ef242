#include "platform/sim/bounded_log.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/libweb.h"
#include "platform/sim/sim_file.h"

namespace platform::sim {
namespace {

// Whether fd is still the file at path: a rotation may have renamed it
// between the open and the lock.
bool still_at(int fd, const std::string& path) {
    struct stat opened, named;
    return ::fstat(fd, &opened) == 0 && ::stat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

enum class append_outcome { written, rotated, failed };

// A line that does not fit moves the log to its older part, and the line
// starts a new one; a failed write is cut off so that it cannot spoil the
// next line.
append_outcome append_to_open_log(int fd, const bounded_log& log, const std::string& line) {
    struct stat before;
    if (!still_at(fd, log.path)) return append_outcome::rotated;
    if (::fstat(fd, &before) != 0) return append_outcome::failed;
    if (before.st_size > 0 &&
        static_cast<std::size_t>(before.st_size) + line.size() > log.max_bytes)
        return ::rename(log.path.c_str(), log.older_path().c_str()) == 0 ? append_outcome::rotated
                                                                         : append_outcome::failed;
    if (write_all(fd, line.data(), line.size())) return append_outcome::written;
    if (::ftruncate(fd, before.st_size) != 0)
        console_log("[ERROR] %s: partial line left\n", log.path.c_str());
    return append_outcome::failed;
}

}  // namespace

bool append_line(const bounded_log& log, const std::string& line) {
    // A rotation by another process between open and lock is met by opening
    // again; three tries bound the loop.
    for (int attempt = 0; attempt < 3; ++attempt) {
        unique_fd fd(::open(log.path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, log.mode));
        if (!fd.valid()) return false;
        file_lock lock(fd.get(), LOCK_EX);
        if (!lock.locked()) return false;
        const append_outcome outcome = append_to_open_log(fd.get(), log, line);
        if (outcome != append_outcome::rotated) return outcome == append_outcome::written;
    }
    return false;
}

}  // namespace platform::sim
