// Events of the BMC event log that are also alerts: the platform starts
// bmc-event-alert (event_alert/) for each such record, and its alert goes
// to every enabled destination whose event types include the record's.
// Event-log codes:
//   148 account change ("<account>, <what>")
//   160..167 host power changes
//   170, 171, 172 a threshold sensor's health became OK, Warning, Critical
//                 (argument: sensor number; text "<sensor name>, <reading>")
#pragma once

#include <string>

namespace odata::redfish {

// Sends the alert of an event-log record; false when the record is not one.
bool send_logged_event_alert(int code, int argument, const std::string& text);

}  // namespace odata::redfish
