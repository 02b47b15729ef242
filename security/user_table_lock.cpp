#include "security/user_table_lock.h"

#include "platform/libipmi_users.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

std::mutex& account_mutex() {
    static std::mutex mutex;
    return mutex;
}

}  // namespace

user_table_lock::user_table_lock()
    : account_mutex_hold_(account_mutex()),
      platform_lock_held_(lx_mutex_get(USER_TABLE_MUTEX) == 0) {
    if (!platform_lock_held_) console_log("[ERROR] cannot take the user table lock\n");
}

user_table_lock::~user_table_lock() {
    if (platform_lock_held_) lx_mutex_put(USER_TABLE_MUTEX);
}

}  // namespace odata::redfish
