#include "platform/sim/alert_queue.h"

#include "platform/libweb.h"
#include "platform/sim/alert_delivery.h"

namespace platform::sim {
namespace {

void drop_alert(const queued_alert& oldest) {
    const std::string line = "entry " + std::to_string(oldest.index) + " " + oldest.kind +
                             ": dropped, the delivery queue is full\n";
    append_delivery_log(line);
    console_log("[ERROR] alert delivery: %s", line.c_str());
}

spool_queue<queued_alert>& alert_queue() {
    static spool_queue<queued_alert> queue("queue", {max_queued_alerts, max_queued_bytes},
                                           drop_alert);
    return queue;
}

}  // namespace

std::string alert_queue_file() { return alert_queue().file(); }

bool enqueue_alert(const queued_alert& alert) { return alert_queue().push(alert); }

bool take_queued_alert(queued_alert& alert) { return alert_queue().take(alert); }

bool alerts_queued() { return alert_queue().any(); }

bool sender_slot_free() { return sender_slot().any_free(); }

}  // namespace platform::sim
