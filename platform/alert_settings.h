// The event service's settings, which alert delivery follows:
// /nv/redfish/event.ini (mode 0600, it holds the SMTP password)
//   [EventService] ServiceEnabled=0|1
//                  DeliveryRetryAttempts=<0..5>
//                  DeliveryRetryIntervalSeconds=<1..300>
//   [SMTP]         ServiceEnabled=0|1, ServerAddress, Port, FromAddress,
//                  ConnectionProtocol, Authentication, Username, Password
// changed under an flock on "event.ini.lock" and replaced through a
// temporary file.
#pragma once

#include <functional>
#include <string>

namespace platform {

inline constexpr int max_delivery_retry_attempts = 5;
inline constexpr int min_delivery_retry_interval = 1;
inline constexpr int max_delivery_retry_interval = 300;

struct smtp_settings {
    bool service_enabled = false;
    std::string server_address;
    int port = 25;
    std::string from_address;
    std::string connection_protocol = "None";  // None, StartTLS, TLS_SSL
    std::string authentication = "None";       // None, Plain, Login, CRAM_MD5
    std::string username;
    std::string password;
};

struct event_service_settings {
    bool service_enabled = true;
    int delivery_retry_attempts = 3;
    int delivery_retry_interval_seconds = 30;
    smtp_settings smtp;
};

const std::string& event_settings_file();

// The stored settings; defaults for what is missing or out of range.
event_service_settings read_event_service_settings();

// One locked read-modify-write; false when the file cannot be written.
bool update_event_service_settings(const std::function<void(event_service_settings&)>& change);

}  // namespace platform
