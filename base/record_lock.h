// A cross-process lock: an fcntl write lock on the whole of a lock file,
// held while the object lives and dropped by the kernel when its process
// dies, so a killed holder never blocks anyone. A process may take the
// same lock again while it holds it; the file is unlocked when the last
// holder ends (fcntl itself would drop it at the first close).
#pragma once

#include <string>

namespace platform {

class record_lock {
public:
    // Waits for the lock on path, creating the file (and its directories).
    explicit record_lock(std::string path);
    record_lock(record_lock&& other) noexcept;
    record_lock(const record_lock&) = delete;
    record_lock& operator=(const record_lock&) = delete;
    record_lock& operator=(record_lock&&) = delete;
    ~record_lock();

    bool held() const { return held_; }

private:
    std::string path_;
    bool held_;
};

}  // namespace platform
