// The platform's alert senders: each checks the entry, copies what it needs
// and leaves the sending to a detached delivery process.
#include "platform/alert_settings.h"
#include "platform/libalert.h"
#include "platform/libweb.h"
#include "platform/sim/alert_delivery.h"
#include "platform/sim/alert_payload.h"
#include "platform/sim/alert_requests.h"

namespace {

using namespace platform::sim;

// The entry when it is enabled, of the type, with a destination, and the
// event service is on.
bool usable_entry(int index, int type, St_AlertDest& entry) {
    return get_config_alert_dest(index, &entry) == 0 && entry.enabled && entry.destination[0] &&
           entry.type == type && platform::read_event_service_settings().service_enabled;
}

int send_trap(int index, int type, const St_AlertEvent* event) {
    St_AlertDest entry{};
    if (!event || !usable_entry(index, type, entry)) return -1;
    return start_alert_delivery(index, type == ALERT_DEST_SNMPV3_TRAP ? "SNMPv3" : "SNMPv2c",
                                request_text(trap_for(entry, copy_alert(*event))))
               ? 0
               : -1;
}

}  // namespace

extern "C" int SendAlertTrapViaLAN(int index, const St_AlertEvent* event) {
    return send_trap(index, ALERT_DEST_SNMP_TRAP, event);
}

extern "C" int SendAlertTrapV3ViaLAN(int index, const St_AlertEvent* event) {
    return send_trap(index, ALERT_DEST_SNMPV3_TRAP, event);
}

extern "C" int SendSMTPEvtViaLAN(int index, const St_AlertEvent* event) {
    St_AlertDest entry{};
    if (!event || !usable_entry(index, ALERT_DEST_SMTP, entry)) return -1;
    const platform::smtp_settings smtp = platform::read_event_service_settings().smtp;
    if (!smtp.service_enabled || smtp.server_address.empty()) {
        console_log("[ERROR] SendSMTPEvtViaLAN: SMTP is not configured\n");
        return -1;
    }
    const mail_delivery mail{smtp, mail_address(entry.destination),
                             mail_message(copy_alert(*event), entry, smtp.from_address)};
    return start_alert_delivery(index, "SMTP", request_text(mail)) ? 0 : -1;
}

extern "C" int SendRedfishEvent(int index, const St_AlertEvent* event) {
    St_AlertDest entry{};
    if (!event || !event->document || !usable_entry(index, ALERT_DEST_REDFISH, entry)) return -1;
    const redfish_delivery delivery{entry.destination, event->document};
    return start_alert_delivery(index, "Redfish", request_text(delivery)) ? 0 : -1;
}

extern "C" int SendAlertEvent(int index, const St_AlertEvent* event) {
    St_AlertDest entry{};
    if (get_config_alert_dest(index, &entry) != 0) return -1;
    switch (entry.type) {
        case ALERT_DEST_SNMP_TRAP:
            return SendAlertTrapViaLAN(index, event);
        case ALERT_DEST_SMTP:
            return SendSMTPEvtViaLAN(index, event);
        case ALERT_DEST_REDFISH:
            return SendRedfishEvent(index, event);
        case ALERT_DEST_SNMPV3_TRAP:
            return SendAlertTrapV3ViaLAN(index, event);
        default:
            return -1;
    }
}
