#include "platform/sim/alert_payload.h"

#include <ctime>

#include "platform/libipmi.h"

namespace platform::sim {
namespace {

std::string text(const char* value) { return value ? value : ""; }

std::string rfc2822_now() {
    char buffer[64];
    const std::time_t now = static_cast<std::time_t>(lx_time_get());
    std::tm utc{};
    gmtime_r(&now, &utc);
    std::strftime(buffer, sizeof buffer, "%a, %d %b %Y %H:%M:%S +0000", &utc);
    return buffer;
}

}  // namespace

alert_content copy_alert(const St_AlertEvent& event) {
    alert_content alert{text(event.event_type),
                        text(event.event_id),
                        text(event.severity),
                        text(event.timestamp),
                        text(event.message),
                        text(event.message_id),
                        {},
                        text(event.origin),
                        text(event.event_dir_and_type),
                        text(event.sensor_type),
                        text(event.sensor_name),
                        text(event.document)};
    for (int i = 0; event.message_args && i < event.message_arg_count; ++i)
        alert.message_args.push_back(text(event.message_args[i]));
    return alert;
}

std::string mail_address(const std::string& destination) {
    const std::string scheme = "mailto:";
    return destination.compare(0, scheme.size(), scheme) == 0 ? destination.substr(scheme.size())
                                                              : destination;
}

std::string mail_message(const alert_content& alert, const St_AlertDest& entry,
                         const std::string& from_address) {
    const std::string address = mail_address(entry.destination);
    const std::string to =
        entry.smtp_user[0] ? std::string(entry.smtp_user) + " <" + address + ">" : address;
    const std::string subject = entry.smtp_subject[0] ? entry.smtp_subject : "BMC event";
    return "Date: " + rfc2822_now() + "\r\nTo: " + to + "\r\nFrom: " + from_address +
           "\r\nSubject: " + subject + "\r\nContent-Type: text/plain; charset=UTF-8\r\n\r\n" +
           alert.severity + ": " + alert.message + "\r\nMessageId: " + alert.message_id +
           "\r\nOriginOfCondition: " + alert.origin + "\r\nEventTimestamp: " + alert.timestamp +
           "\r\n\r\n" + alert.document + "\r\n";
}

}  // namespace platform::sim
