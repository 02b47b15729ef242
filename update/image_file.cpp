#include "update/image_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace odata::redfish {

image_file::image_file(const std::string& path) {
    ::unlink(path.c_str());
    fd_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
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

bool image_file::finish() {
    const bool synced = ::fsync(fd_) == 0;
    const bool closed = ::close(fd_) == 0;
    fd_ = -1;
    return synced && closed;
}

}  // namespace odata::redfish
