// The version of a file, as the BMC's programs tell whether another
// process changed it.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <string>

namespace platform {

// What tells one version of a file from the next: a writer that renames a
// new file into place changes the inode, one that rewrites it in place the
// size or the times.
struct file_version {
    bool exists = false;
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    long long modified_ns = 0;
    long long changed_ns = 0;

    bool operator==(const file_version& other) const;
    bool operator!=(const file_version& other) const { return !(*this == other); }
};

// The version of the file at path; exists is false when it cannot be seen.
// Noted as an input of a recording in progress (input_recording.h).
file_version version_of(const std::string& path);
// The version of a file whose status is at hand.
file_version version_of(const struct stat& status);

// True when the version is old enough to tell every later change: two
// writes within one tick of the file system's clock, the second reusing the
// first's freed inode at the same size, would look alike. The change time
// decides, as no writer can set it.
bool settled(const file_version& version);

// The clock that settled() reads, in nanoseconds; null for the real one.
using settle_clock = long long (*)();
void set_settle_clock_for_tests(settle_clock clock);

}  // namespace platform
