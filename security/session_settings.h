// The session service's settings, /nv/redfish/sessionservice.ini.
#pragma once

#include "base/record_lock.h"

namespace odata::redfish {

constexpr long default_session_timeout = 1800;
constexpr long min_session_timeout = 30;
constexpr long max_session_timeout = 86400;

class sessionserviceconfig {
public:
    static long session_timeout();
    static bool service_enabled();
    // The file's cross-process lock, held from a change's read to its store.
    static platform::record_lock lock();
    // False when the file could not be written.
    static bool store(long session_timeout, bool service_enabled);
};

}  // namespace odata::redfish
