#include "platform/atomic_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace platform {
namespace {

constexpr std::string_view temporary_marker = ".tmp.";

std::string directory_of(const std::string& path) {
    std::string parent = std::filesystem::path(path).parent_path().string();
    return parent.empty() ? "." : parent;
}

std::string name_of(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

// "<path>.tmp.<pid>.<n>": the writer's pid tells a sweep whether it lives.
std::string temporary_name(const std::string& path) {
    static std::atomic<unsigned> counter{0};
    return path + std::string(temporary_marker) + std::to_string(::getpid()) + "." +
           std::to_string(counter++);
}

bool write_all(int fd, std::string_view content) {
    while (!content.empty()) {
        ssize_t written = ::write(fd, content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool read_whole(const std::string& path, std::string& content) {
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    char buffer[8192];
    ssize_t got;
    content.clear();
    while ((got = ::read(fd, buffer, sizeof buffer)) != 0) {
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) break;
        content.append(buffer, static_cast<std::size_t>(got));
    }
    ::close(fd);
    return got == 0;
}

bool sync_directory(const std::string& path) {
    int fd = ::open(directory_of(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return false;
    bool synced = ::fsync(fd) == 0;
    ::close(fd);
    return synced;
}

// Creates the directories above path and a synced temporary file beside it
// holding content; "" on failure, with nothing left behind.
std::string write_temporary(const std::string& path, std::string_view content, mode_t mode) {
    std::error_code ignored;
    std::filesystem::create_directories(directory_of(path), ignored);
    remove_stale_temporaries(path);
    std::string temporary = temporary_name(path);
    // Created private; the umask cannot widen it, fchmod sets the exact mode.
    int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode & 0600);
    if (fd < 0) return {};
    bool written = ::fchmod(fd, mode) == 0 && write_all(fd, content) && ::fsync(fd) == 0;
    written = ::close(fd) == 0 && written;
    if (written) return temporary;
    ::unlink(temporary.c_str());
    return {};
}

}  // namespace

bool write_file_atomically(const std::string& path, std::string_view content, mode_t mode) {
    std::string temporary = write_temporary(path, content, mode);
    if (temporary.empty()) return false;
    if (::rename(temporary.c_str(), path.c_str()) != 0) {
        ::unlink(temporary.c_str());
        return false;
    }
    return sync_directory(path);
}

staged_files::~staged_files() { discard_temporaries(); }

void staged_files::discard_temporaries() {
    for (staged& file : files_) {
        if (!file.temporary.empty()) ::unlink(file.temporary.c_str());
        file.temporary.clear();
    }
}

bool staged_files::stage(const std::string& path, std::string_view content, mode_t mode) {
    staged file;
    file.path = path;
    file.existed = read_whole(path, file.previous);
    if (!file.existed && errno != ENOENT) failed_ = true;
    file.temporary = failed_ ? std::string() : write_temporary(path, content, mode);
    failed_ = failed_ || file.temporary.empty();
    files_.push_back(std::move(file));
    return !failed_;
}

bool staged_files::commit() {
    if (failed_) {
        discard_temporaries();
        return false;
    }
    std::size_t renamed = 0;
    for (; renamed < files_.size(); ++renamed) {
        staged& file = files_[renamed];
        if (::rename(file.temporary.c_str(), file.path.c_str()) != 0) break;
        file.temporary.clear();
    }
    bool complete = renamed == files_.size();
    for (std::size_t i = 0; !complete && i < renamed; ++i) {
        struct stat status;
        const staged& file = files_[i];
        if (!file.existed) {
            ::unlink(file.path.c_str());
        } else if (::stat(file.path.c_str(), &status) == 0) {
            write_file_atomically(file.path, file.previous, status.st_mode & 07777);
        }
    }
    for (const staged& file : files_) complete = sync_directory(file.path) && complete;
    failed_ = !complete;
    return complete;
}

void remove_stale_temporaries(const std::string& path) {
    const std::string prefix = name_of(path) + std::string(temporary_marker);
    DIR* directory = ::opendir(directory_of(path).c_str());
    if (!directory) return;
    while (const dirent* entry = ::readdir(directory)) {
        std::string_view name = entry->d_name;
        if (name.substr(0, prefix.size()) != prefix) continue;
        char* end = nullptr;
        long writer = std::strtol(entry->d_name + prefix.size(), &end, 10);
        if (writer <= 0 || *end != '.') continue;
        if (::kill(static_cast<pid_t>(writer), 0) != 0 && errno == ESRCH)
            ::unlinkat(::dirfd(directory), entry->d_name, 0);
    }
    ::closedir(directory);
}

}  // namespace platform
