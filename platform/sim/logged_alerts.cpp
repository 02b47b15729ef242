#include "platform/sim/logged_alerts.h"

#include "base/bmc_root.h"
#include "platform/libalert.h"
#include "platform/sim/alert_delivery.h"

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
    start_detached({bmc_path("/usr/sbin/bmc-event-alert"), std::to_string(code),
                    std::to_string(argument), text},
                   "");
}

}  // namespace platform::sim
