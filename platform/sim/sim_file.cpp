#include "platform/sim/sim_file.h"

#include "base/atomic_file.h"
#include "base/input_recording.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace platform::sim {

bool make_parent_dirs(const std::string& path) {
    auto parent = std::filesystem::path(path).parent_path();
    if (parent.empty()) return true;
    std::error_code error;
    std::filesystem::create_directories(parent, error);
    return !error && std::filesystem::is_directory(parent, error);
}

bool write_all(int fd, const void* data, std::size_t size) {
    auto* bytes = static_cast<const char*>(data);
    while (size > 0) {
        ssize_t written = ::write(fd, bytes, size);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool pwrite_all(int fd, const void* data, std::size_t size, off_t offset) {
    auto* bytes = static_cast<const char*>(data);
    while (size > 0) {
        ssize_t written = ::pwrite(fd, bytes, size, offset);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes += written;
        offset += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool read_all(int fd, std::string& text) {
    char buffer[8192];
    for (;;) {
        ssize_t got = ::read(fd, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return false;
        if (got == 0) return true;
        text.append(buffer, static_cast<std::size_t>(got));
    }
}

bool replace_file(const std::string& path, const std::string& content, mode_t mode) {
    return make_parent_dirs(path) && write_file_atomically(path, content, mode);
}

bool read_file(const std::string& path, std::string& text) {
    note_input_file(path);
    unique_fd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    text.clear();
    return fd.valid() && read_all(fd.get(), text);
}

unique_fd::~unique_fd() {
    if (fd_ >= 0) ::close(fd_);
}

file_lock::file_lock(int fd, int operation) : fd_(fd), locked_(false) {
    int result;
    do {
        result = ::flock(fd_, operation);
    } while (result != 0 && errno == EINTR);
    locked_ = result == 0;
}

file_lock::~file_lock() {
    if (locked_) ::flock(fd_, LOCK_UN);
}

}  // namespace platform::sim
