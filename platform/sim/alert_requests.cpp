#include "platform/sim/alert_requests.h"

namespace platform::sim {

trap_delivery trap_for(const St_AlertDest& entry, const alert_content& alert) {
    return {entry.type,
            entry.destination,
            entry.community,
            entry.snmp_user,
            entry.authentication_protocol,
            entry.authentication_key,
            entry.encryption_protocol,
            entry.encryption_key,
            entry.context,
            alert};
}

}  // namespace platform::sim
