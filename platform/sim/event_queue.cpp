#include "platform/sim/event_queue.h"

#include "platform/libweb.h"
#include "platform/sim/alert_delivery.h"

namespace platform::sim {
namespace {

void drop_event(const queued_event& oldest) {
    const std::string line =
        "event " + std::to_string(oldest.code) + ": dropped, the event queue is full\n";
    append_delivery_log(line);
    console_log("[ERROR] event filter: %s", line.c_str());
}

}  // namespace

spool_queue<queued_event>& event_queue() {
    static spool_queue<queued_event> queue("events", {max_queued_events, max_queued_event_bytes},
                                           drop_event);
    return queue;
}

}  // namespace platform::sim
