// SNMPv3 settings of the simulated BMC's users: <root>/nv/bmc/snmp_users, a
// JSON document (mode 0600) written through a temporary file and rename
// under an flock on <root>/var/bmc/snmp_users.lock:
//   {"format":1,"slots":[{"slot":3,"key":<user key>,
//     "authentication_protocol":1,"authentication_key":"<salted hash>",
//     "encryption_protocol":2,"encryption_key":""}]}
// Keys are stored only as salted hashes and never given back: readers learn
// whether one is set. An entry whose key is not the slot's current record
// key belongs to an earlier user of the slot and reads as unset.
// setSNMPDaemonOP counts the daemon operations in the simulator settings:
// [SNMP] DaemonRestarts (incremented) and LastOperation.
#pragma once

#include <string>

namespace platform {

const std::string& snmp_users_file();

// How often setSNMPDaemonOP ran.
long long snmp_daemon_restarts();

}  // namespace platform
