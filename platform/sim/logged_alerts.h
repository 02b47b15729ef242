// Events of the BMC event log that are also alerts: the platform's event
// filter queues each such record, when an enabled alert destination takes
// its event type (event_queue.h), and bmc-event-filter hands it to the
// service's program /usr/sbin/bmc-event-alert (CODE ARGUMENT TEXT), which
// makes and sends the alert. Event-log codes:
//   148 account change ("<account>, <what>")
//   160..167 host power changes (chassis_events.h)
//   170, 171, 172 a threshold sensor's health became OK, Warning, Critical
//                 (argument: sensor number; text "<sensor name>, <reading>")
#pragma once

#include <string>

namespace platform::sim {

enum {
    event_sensor_normal = 170,
    event_sensor_warning = 171,
    event_sensor_critical = 172,
};

// Queues the alert of an event-log record, if the record is one, and starts
// the filter's worker when its slot is free, waiting only until it started.
void raise_logged_alert(int code, int argument, const std::string& text);

}  // namespace platform::sim
