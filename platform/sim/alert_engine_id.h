// The SNMP engine of the BMC's traps.
#pragma once

#include <string>

namespace platform::sim {

// The BMC is the authoritative engine of its traps: enterprise 8072,
// format 4 (text), "twr-bmc".
inline constexpr unsigned char alert_engine_id[] = {0x80, 0x00, 0x1f, 0x88, 0x04, 't',
                                                    'w',  'r',  '-',  'b',  'm',  'c'};

// The engine ID as hexadecimal digits, which a receiver's createUser -e
// needs.
std::string snmp_engine_id_hex();

}  // namespace platform::sim
