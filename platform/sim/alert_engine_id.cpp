#include "platform/sim/alert_engine_id.h"

#include <cstdio>

namespace platform::sim {

std::string snmp_engine_id_hex() {
    std::string hex;
    char digits[3];
    for (unsigned char byte : alert_engine_id) {
        std::snprintf(digits, sizeof digits, "%02X", byte);
        hex += digits;
    }
    return hex;
}

}  // namespace platform::sim
