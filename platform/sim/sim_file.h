// Small POSIX file helpers for the simulator's stores under the BMC root.
#pragma once

#include <sys/types.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace platform::sim {

// Creates every missing directory above the file path.
bool make_parent_dirs(const std::string& path);

// Writes all bytes, retrying short writes and EINTR.
bool write_all(int fd, const void* data, std::size_t size);
bool pwrite_all(int fd, const void* data, std::size_t size, off_t offset);

// Reads the rest of the file into text.
bool read_all(int fd, std::string& text);

// Replaces the file at path with content (creating its directories) through
// the one atomic writer, platform::write_file_atomically.
bool replace_file(const std::string& path, const std::string& content, mode_t mode);

// Reads the whole file; false when it cannot be opened or read.
bool read_file(const std::string& path, std::string& text);

// Copies text into a fixed-size field, cut to fit, NULs filling the rest.
template <std::size_t size>
void copy_text(char (&field)[size], std::string_view text) {
    const std::size_t length = std::min(text.size(), size - 1);
    std::memcpy(field, text.data(), length);
    std::memset(field + length, 0, size - length);
}

// Owns an open descriptor.
class unique_fd {
public:
    explicit unique_fd(int fd = -1) : fd_(fd) {}
    unique_fd(const unique_fd&) = delete;
    unique_fd& operator=(const unique_fd&) = delete;
    ~unique_fd();
    int get() const { return fd_; }
    bool valid() const { return fd_ >= 0; }

private:
    int fd_;
};

// Holds an flock (LOCK_SH or LOCK_EX) on a descriptor while alive.
class file_lock {
public:
    file_lock(int fd, int operation);
    file_lock(const file_lock&) = delete;
    file_lock& operator=(const file_lock&) = delete;
    ~file_lock();
    bool locked() const { return locked_; }

private:
    int fd_;
    bool locked_;
};

}  // namespace platform::sim
