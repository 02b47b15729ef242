#include "tasks/logged_event_alerts.h"

#include <string_view>
#include <vector>

#include "base/utc_time.h"
#include "framework/event_messages.h"
#include "platform/libipmi.h"
#include "resources/chassis/sdr_sensors.h"
#include "tasks/event_alerts.h"

namespace odata::redfish {
namespace {

enum class origin_kind { system, accounts, sensor };

struct logged_alert {
    int code;
    std::string_view key;  // of event_messages()
    const char* event_type;
    int event_type_bit;
    origin_kind origin;
};

constexpr logged_alert logged_alerts[] = {
    {148, "AccountModified", "ResourceUpdated", ALERT_EVENT_RESOURCE_UPDATED,
     origin_kind::accounts},
    {160, "HostPowerOn", "StatusChange", ALERT_EVENT_STATUS_CHANGE, origin_kind::system},
    {161, "HostPowerOff", "StatusChange", ALERT_EVENT_STATUS_CHANGE, origin_kind::system},
    {162, "HostGracefulShutdownRequested", "StatusChange", ALERT_EVENT_STATUS_CHANGE,
     origin_kind::system},
    {163, "HostGracefulShutdownDone", "StatusChange", ALERT_EVENT_STATUS_CHANGE,
     origin_kind::system},
    {164, "HostPowerCycle", "StatusChange", ALERT_EVENT_STATUS_CHANGE, origin_kind::system},
    {165, "HostPowerOnAfterCycle", "StatusChange", ALERT_EVENT_STATUS_CHANGE, origin_kind::system},
    {166, "HostReset", "StatusChange", ALERT_EVENT_STATUS_CHANGE, origin_kind::system},
    {167, "HostDiagnosticInterrupt", "StatusChange", ALERT_EVENT_STATUS_CHANGE,
     origin_kind::system},
    {170, "SensorThresholdNormal", "Alert", ALERT_EVENT_ALERT, origin_kind::sensor},
    {171, "SensorThresholdWarning", "Alert", ALERT_EVENT_ALERT, origin_kind::sensor},
    {172, "SensorThresholdCritical", "Alert", ALERT_EVENT_ALERT, origin_kind::sensor},
};

const logged_alert* alert_of_code(int code) {
    for (const logged_alert& alert : logged_alerts)
        if (alert.code == code) return &alert;
    return nullptr;
}

const event_message* message_of(std::string_view key) {
    for (const event_message& message : event_messages())
        if (message.key == key) return &message;
    return nullptr;
}

// Sensors are numbered from 1 as the chassis lists them.
std::string sensor_origin(int sensor_number) {
    const std::vector<const St_SensorData*> sensors = exposed_sensors();
    for (std::size_t i = 0; i < sensors.size(); ++i)
        if (sensors[i]->sensor_number == sensor_number)
            return "/redfish/v1/Chassis/1/Sensors/" + std::to_string(i + 1);
    return "/redfish/v1/Chassis/1/Sensors";
}

std::string origin_of(origin_kind kind, int argument) {
    switch (kind) {
        case origin_kind::accounts:
            return "/redfish/v1/AccountService/Accounts";
        case origin_kind::sensor:
            return sensor_origin(argument);
        default:
            return "/redfish/v1/Systems/1";
    }
}

// "%1" and "%2" of a message come from the text "<first>, <second>".
std::vector<std::string> alert_arguments(const event_message& message, const std::string& text) {
    if (message.message.find("%2") != std::string_view::npos) {
        const std::size_t comma = text.find(", ");
        if (comma != std::string::npos) return {text.substr(0, comma), text.substr(comma + 2)};
        return {text, ""};
    }
    if (message.message.find("%1") != std::string_view::npos) return {text};
    return {};
}

std::string substituted(std::string_view message, const std::vector<std::string>& args) {
    std::string result(message);
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string placeholder = "%" + std::to_string(i + 1);
        const std::size_t at = result.find(placeholder);
        if (at != std::string::npos) result.replace(at, placeholder.size(), args[i]);
    }
    return result;
}

bool receives(const St_AlertDest& entry, int event_type_bit) {
    return entry.enabled && (entry.event_types == 0 || (entry.event_types & event_type_bit));
}

}  // namespace

bool send_logged_event_alert(int code, int argument, const std::string& text) {
    const logged_alert* alert = alert_of_code(code);
    const event_message* message = alert ? message_of(alert->key) : nullptr;
    if (!message) return false;
    const std::vector<std::string> args = alert_arguments(*message, text);
    std::vector<const char*> arg_texts;
    for (const std::string& arg : args) arg_texts.push_back(arg.c_str());
    const long long now = lx_time_get();
    const std::string event_id = std::to_string(now) + "-" + std::to_string(code);
    const std::string message_id = std::string(event_registry_prefix) + std::string(alert->key);
    const std::string message_text = substituted(message->message, args);
    const std::string severity(message->severity);
    const std::string timestamp = platform::utc_timestamp(now);
    const std::string origin = origin_of(alert->origin, argument);
    const std::string sensor_name = alert->origin == origin_kind::sensor ? args.front() : "";
    const St_AlertEvent event{alert->event_type,
                              event_id.c_str(),
                              severity.c_str(),
                              timestamp.c_str(),
                              message_text.c_str(),
                              message_id.c_str(),
                              arg_texts.data(),
                              static_cast<int>(arg_texts.size()),
                              origin.c_str(),
                              "",
                              alert->origin == origin_kind::sensor ? "Threshold" : "",
                              sensor_name.c_str(),
                              nullptr};
    send_alert_event(event, [alert](const St_AlertDest& entry) {
        return receives(entry, alert->event_type_bit);
    });
    return true;
}

}  // namespace odata::redfish
