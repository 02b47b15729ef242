#include <ctime>

#include "platform/libipmi.h"

extern "C" long lx_time_get(void) { return static_cast<long>(std::time(nullptr)); }
