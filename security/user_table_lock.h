// Serialises changes of the user table: the service's account mutex for the
// threads of this process, and within it the platform's cross-process lock.
#pragma once

#include <mutex>

namespace odata::redfish {

class user_table_lock {
public:
    user_table_lock();
    ~user_table_lock();
    user_table_lock(const user_table_lock&) = delete;
    user_table_lock& operator=(const user_table_lock&) = delete;

    // False when the platform's lock could not be taken: change nothing.
    bool held() const { return platform_lock_held_; }

private:
    std::lock_guard<std::mutex> account_mutex_hold_;
    bool platform_lock_held_;
};

}  // namespace odata::redfish
