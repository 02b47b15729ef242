#include "platform/sim/logged_alerts.h"

#include "base/bmc_root.h"
#include "platform/libalert.h"
#include "platform/libweb.h"
#include "platform/sim/alert_delivery.h"
#include "platform/sim/event_queue.h"
#include "platform/sim/sim_file.h"

namespace platform::sim {
namespace {

// The event filter: the event-log codes that are alerts, with their event
// type.
struct filtered_event {
    int code;
    int event_type_bit;
};

constexpr filtered_event filtered_events[] = {
    {148, ALERT_EVENT_RESOURCE_UPDATED},       {160, ALERT_EVENT_STATUS_CHANGE},
    {161, ALERT_EVENT_STATUS_CHANGE},          {162, ALERT_EVENT_STATUS_CHANGE},
    {163, ALERT_EVENT_STATUS_CHANGE},          {164, ALERT_EVENT_STATUS_CHANGE},
    {165, ALERT_EVENT_STATUS_CHANGE},          {166, ALERT_EVENT_STATUS_CHANGE},
    {167, ALERT_EVENT_STATUS_CHANGE},          {event_sensor_normal, ALERT_EVENT_ALERT},
    {event_sensor_warning, ALERT_EVENT_ALERT}, {event_sensor_critical, ALERT_EVENT_ALERT},
};

int event_type_of(int code) {
    for (const filtered_event& event : filtered_events)
        if (event.code == code) return event.event_type_bit;
    return 0;
}

bool any_receiver(int event_type_bit) {
    for (int index = 0; index < ALERT_DEST_COUNT; ++index) {
        St_AlertDest entry{};
        if (get_config_alert_dest(index, &entry) == 0 && entry.enabled &&
            (entry.event_types == 0 || (entry.event_types & event_type_bit)))
            return true;
    }
    return false;
}

}  // namespace

void raise_logged_alert(int code, int argument, const std::string& text) {
    const int event_type_bit = event_type_of(code);
    if (event_type_bit == 0 || !any_receiver(event_type_bit)) return;
    make_parent_dirs(alert_delivery_log().path);
    if (!event_queue().push({code, argument, text})) {
        console_log("[ERROR] event filter: event %d cannot be queued\n", code);
        return;
    }
    // A busy filter takes the event when it is done with its own; one that
    // is just leaving looks at the queue once more after freeing its slot.
    if (filter_slot().any_free()) start_detached({bmc_path("/usr/sbin/bmc-event-filter")}, "");
}

}  // namespace platform::sim
