// Events of the BMC event log that are also alerts: each such record is
// sent to every enabled alert destination whose event types include the
// record's. Event-log codes:
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

// Sends the alert of an event-log record, if the record is one.
void raise_logged_alert(int code, int argument, const std::string& text);

}  // namespace platform::sim
