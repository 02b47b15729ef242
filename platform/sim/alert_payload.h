// What an alert carries, copied out of the caller's event so that a
// delivery process owns it, and the texts the destinations receive.
#pragma once

#include <string>
#include <vector>

#include "platform/libalert.h"

namespace platform::sim {

struct alert_content {
    std::string event_type;
    std::string event_id;
    std::string severity;
    std::string timestamp;
    std::string message;
    std::string message_id;
    std::vector<std::string> message_args;
    std::string origin;
    std::string event_dir_and_type;
    std::string sensor_type;
    std::string sensor_name;
    std::string document;  // the Redfish event document; traps do without
};

alert_content copy_alert(const St_AlertEvent& event);

// "To", "From", "Subject" and "Date" headers, a summary and the event's
// Redfish event document; lines end in CRLF.
std::string mail_message(const alert_content& alert, const St_AlertDest& entry,
                         const std::string& from_address);

// The mail address of a destination, without a "mailto:" prefix.
std::string mail_address(const std::string& destination);

}  // namespace platform::sim
