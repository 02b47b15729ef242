#include "base/record_lock.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <map>
#include <mutex>
#include <system_error>

namespace platform {
namespace {

struct held_file {
    int fd = -1;
    int holders = 0;
};

std::mutex table_guard;

// The lock files this process holds; a fork's child inherits none of the
// fcntl locks, so it forgets the parent's entries.
std::map<std::string, held_file>& held_files() {
    static std::map<std::string, held_file> files;
    static pid_t owner = ::getpid();
    if (owner != ::getpid()) {
        files.clear();
        owner = ::getpid();
    }
    return files;
}

int open_locked(const std::string& path) {
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0) return -1;
    struct flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    int result;
    do {
        result = ::fcntl(fd, F_SETLKW, &whole);
    } while (result != 0 && errno == EINTR);
    if (result == 0) return fd;
    ::close(fd);
    return -1;
}

}  // namespace

record_lock::record_lock(std::string path) : path_(std::move(path)), held_(false) {
    std::lock_guard<std::mutex> hold(table_guard);
    held_file& file = held_files()[path_];
    if (file.holders == 0) file.fd = open_locked(path_);
    held_ = file.fd >= 0;
    if (held_) ++file.holders;
}

record_lock::record_lock(record_lock&& other) noexcept
    : path_(std::move(other.path_)), held_(other.held_) {
    other.held_ = false;
}

record_lock::~record_lock() {
    if (!held_) return;
    std::lock_guard<std::mutex> hold(table_guard);
    auto file = held_files().find(path_);
    if (file == held_files().end() || --file->second.holders > 0) return;
    ::close(file->second.fd);  // closing releases the lock
    held_files().erase(file);
}

}  // namespace platform
