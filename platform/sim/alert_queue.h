// The one queue of alert deliveries and the slots of their senders. Every
// alert waits in <root>/var/spool/alerts/queue (mode 0600: requests hold
// SMTP passwords and SNMPv3 keys; changed under an flock on "queue.lock"
// and replaced whole) until one of at most max_alert_senders processes of
// bmc-alert-send takes it. A sender holds the flock of one slot file
// (slot.<n>) while it lives, so a killed sender frees its slot at once and
// nothing counts senders that are gone. A full queue drops its oldest alert
// with a line in the delivery log.
#pragma once

#include <cstddef>
#include <string>

namespace platform::sim {

inline constexpr int max_alert_senders = 4;
inline constexpr std::size_t max_queued_alerts = 64;
inline constexpr std::size_t max_queued_bytes = 1 << 20;

struct queued_alert {
    int index = 0;     // the alert-destination entry
    std::string kind;  // "Redfish", "SMTP", "SNMPv2c", "SNMPv3"
    std::string request;
};

std::string alert_queue_file();

// Appends alert, dropping the oldest ones to stay within the bounds; false
// when the queue cannot be written (or alert alone exceeds them).
bool enqueue_alert(const queued_alert& alert);

// Removes the oldest alert into alert; false when there is none.
bool take_queued_alert(queued_alert& alert);

bool alerts_queued();

// One sender slot, held from take() until destruction.
class sender_slot {
public:
    sender_slot() = default;
    sender_slot(const sender_slot&) = delete;
    sender_slot& operator=(const sender_slot&) = delete;
    ~sender_slot() { release(); }
    // Takes a free slot without waiting; false when every one is held.
    bool take();
    void release();

private:
    int fd_ = -1;
};

// Whether a slot is free now.
bool sender_slot_free();

}  // namespace platform::sim
