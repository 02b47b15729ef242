#include "base/file_version.h"

#include <sys/stat.h>

#include <ctime>

#include "base/input_recording.h"

namespace platform {
namespace {

constexpr long long nanoseconds_per_second = 1000000000LL;
// Far more than any file system's timestamp tick.
constexpr long long settle_ns = nanoseconds_per_second;

settle_clock test_clock = nullptr;

long long nanoseconds(const timespec& time) {
    return time.tv_sec * nanoseconds_per_second + time.tv_nsec;
}

long long now_ns() {
    if (test_clock) return test_clock();
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return nanoseconds(now);
}

}  // namespace

bool file_version::operator==(const file_version& other) const {
    return exists == other.exists && device == other.device && inode == other.inode &&
           size == other.size && modified_ns == other.modified_ns && changed_ns == other.changed_ns;
}

file_version version_of(const std::string& path) {
    struct stat status {};
    const file_version version =
        ::stat(path.c_str(), &status) == 0 ? version_of(status) : file_version();
    note_input(path, version);
    return version;
}

file_version version_of(const struct stat& status) {
    file_version version;
    version.exists = true;
    version.device = status.st_dev;
    version.inode = status.st_ino;
    version.size = status.st_size;
    version.modified_ns = nanoseconds(status.st_mtim);
    version.changed_ns = nanoseconds(status.st_ctim);
    return version;
}

bool settled(const file_version& version) { return now_ns() - version.changed_ns > settle_ns; }

void set_settle_clock_for_tests(settle_clock clock) { test_clock = clock; }

}  // namespace platform
