// The one queue of alert deliveries and the slots of their senders
// (spool_queue.h). Every alert waits in <root>/var/spool/alerts/queue
// (requests hold SMTP passwords and SNMPv3 keys) until one of at most
// max_alert_senders processes of bmc-alert-send, each holding one of the
// slots slot.0 ..., takes it. A full queue drops its oldest alert with a
// line in the delivery log.
#pragma once

#include <boost/describe/class.hpp>
#include <cstddef>
#include <string>

#include "platform/sim/spool_queue.h"

namespace platform::sim {

inline constexpr int max_alert_senders = 4;
inline constexpr std::size_t max_queued_alerts = 64;
inline constexpr std::size_t max_queued_bytes = 1 << 20;

struct queued_alert {
    int index = 0;     // the alert-destination entry
    std::string kind;  // "Redfish", "SMTP", "SNMPv2c", "SNMPv3"
    std::string request;
};
BOOST_DESCRIBE_STRUCT(queued_alert, (), (index, kind, request))

std::string alert_queue_file();

// Appends alert, dropping the oldest ones to stay within the bounds; false
// when the queue cannot be written (or alert alone exceeds them).
bool enqueue_alert(const queued_alert& alert);

// Removes the oldest alert into alert; false when there is none.
bool take_queued_alert(queued_alert& alert);

bool alerts_queued();

// One sender slot, held from take() until destruction.
class sender_slot : public spool_slot {
public:
    sender_slot() : spool_slot("slot", max_alert_senders) {}
};

// Whether a slot is free now.
bool sender_slot_free();

}  // namespace platform::sim
