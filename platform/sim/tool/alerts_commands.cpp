// bmcsim alerts: the alert-destination table (keys and community only as
// "set" or not), the SNMPv3 engine ID of the traps, and the delivery log.
#include <ostream>
#include <string>

#include "platform/libalert.h"
#include "platform/sim/alert_delivery.h"
#include "platform/sim/alert_engine_id.h"
#include "platform/sim/alert_table.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace alerts_commands {

const char* type_name(int type) {
    constexpr const char* names[] = {"SNMPv2c", "SMTP", "Redfish", "SNMPv3"};
    return type >= 0 && type <= ALERT_DEST_SNMPV3_TRAP ? names[type] : "unknown";
}

const char* set_or_not(const char* text) { return text[0] ? "set" : "-"; }

int show(std::ostream& out) {
    out << "ENTRY ENABLED TYPE EVENT_TYPES DESTINATION CONTEXT COMMUNITY SNMP_USER AUTH "
           "AUTH_KEY PRIV PRIV_KEY SUBJECT USER\n";
    const platform::alert_table table = platform::read_alert_table();
    for (int index = 0; index < ALERT_DEST_COUNT; ++index) {
        const St_AlertDest& entry = table[index];
        if (!entry.enabled && !entry.destination[0]) continue;
        out << index << ' ' << (entry.enabled ? "yes" : "no") << ' ' << type_name(entry.type) << ' '
            << static_cast<int>(entry.event_types) << ' ' << entry.destination << " \""
            << entry.context << "\" " << set_or_not(entry.community) << ' '
            << (entry.snmp_user[0] ? entry.snmp_user : "-") << ' '
            << static_cast<int>(entry.authentication_protocol) << ' '
            << set_or_not(entry.authentication_key) << ' '
            << static_cast<int>(entry.encryption_protocol) << ' '
            << set_or_not(entry.encryption_key) << " \"" << entry.smtp_subject << "\" \""
            << entry.smtp_user << "\"\n";
    }
    return exit_ok;
}

int log(std::ostream& out) {
    const platform::sim::bounded_log delivery_log = platform::sim::alert_delivery_log();
    for (const std::string& path : {delivery_log.older_path(), delivery_log.path}) {
        std::string text;
        platform::sim::read_file(path, text);
        out << text;
    }
    return exit_ok;
}

int run_alerts(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    if (words.size() != 1) return usage(self, err);
    if (words.front() == "show") return show(out);
    if (words.front() == "engine-id") {
        out << "0x" << platform::sim::snmp_engine_id_hex() << '\n';
        return exit_ok;
    }
    if (words.front() == "log") return log(out);
    return usage(self, err);
}

}  // namespace alerts_commands

const area alerts_area = {"alerts", "show | engine-id | log", alerts_commands::run_alerts};

}  // namespace bmcsim
