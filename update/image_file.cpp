#include "update/image_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace odata::redfish {
namespace {

std::string directory_of(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

}  // namespace

image_file::image_file(std::string path) : path_(std::move(path)) {
    fd_ = ::open(directory_of(path_).c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
}

image_file::~image_file() {
    if (fd_ >= 0) ::close(fd_);
}

bool image_file::write(const char* data, size_t length) {
    while (length > 0) {
        const ssize_t written = ::write(fd_, data, length);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        data += written;
        length -= static_cast<size_t>(written);
        size_ += written;
    }
    return true;
}

bool image_file::commit() {
    if (fd_ < 0 || ::fsync(fd_) != 0) return false;
    // Only the holder of the firmware-update lock writes images: nothing
    // comes between the removal of the old one and the link of the new.
    const std::string self = "/proc/self/fd/" + std::to_string(fd_);
    ::unlink(path_.c_str());
    const bool linked =
        ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, path_.c_str(), AT_SYMLINK_FOLLOW) == 0;
    const bool closed = ::close(fd_) == 0;
    fd_ = -1;
    return linked && closed;
}

}  // namespace odata::redfish
