// bmcsim snmp: the users' SNMPv3 settings (keys only as "set" or not) and
// how often the SNMP daemon was restarted.
#include <ostream>

#include "platform/libipmi_users.h"
#include "platform/sim/snmp_users.h"
#include "platform/sim/tool/areas.h"
#include "platform/sim/user_table.h"

namespace bmcsim {
namespace snmp_commands {

int run_snmp(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    if (words.size() != 1 || words.front() != "show") return usage(self, err);
    out << "daemon restarts: " << platform::snmp_daemon_restarts() << '\n'
        << "SLOT NAME AUTH_PROTOCOL AUTH_KEY_SET ENCRYPTION_PROTOCOL ENCRYPTION_KEY_SET\n";
    for (int slot = 1; slot < MAX_USER_SLOTS; ++slot) {
        int values[4];
        if (UtilSNMPGetCfg(slot, &values[0], &values[1], &values[2], &values[3]) != 0) continue;
        out << slot << ' ' << platform::user_slot_name(slot) << ' ' << values[0] << ' '
            << (values[1] ? "yes" : "no") << ' ' << values[2] << ' ' << (values[3] ? "yes" : "no")
            << '\n';
    }
    return exit_ok;
}

}  // namespace snmp_commands

const area snmp_area = {"snmp", "show", snmp_commands::run_snmp};

}  // namespace bmcsim
