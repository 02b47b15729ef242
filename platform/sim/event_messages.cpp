#include "platform/event_messages.h"

#include <ctime>

namespace platform {

const std::vector<event_message>& event_messages() {
    static const std::vector<event_message> messages = {
        {"AccountModified", "OK", "The account %1 was changed: %2.", "None."},
        {"HostPowerOn", "OK", "The host was powered on.", "None."},
        {"HostPowerOff", "OK", "The host was powered off.", "None."},
        {"HostGracefulShutdownRequested", "OK", "A graceful shutdown of the host was requested.",
         "None."},
        {"HostGracefulShutdownDone", "OK", "The host was powered off by a graceful shutdown.",
         "None."},
        {"HostPowerCycle", "OK", "The host was power cycled.", "None."},
        {"HostPowerOnAfterCycle", "OK", "The host was powered on after a power cycle.", "None."},
        {"HostReset", "Warning", "The host was reset.", "None."},
        {"HostDiagnosticInterrupt", "Warning", "A diagnostic interrupt (NMI) was sent to the host.",
         "None."},
        {"SensorThresholdNormal", "OK", "Sensor %1 reads %2 and is back within its thresholds.",
         "None."},
        {"SensorThresholdWarning", "Warning",
         "Sensor %1 reads %2 and has crossed a non-critical threshold.",
         "Check the condition of the component that the sensor monitors."},
        {"SensorThresholdCritical", "Critical",
         "Sensor %1 reads %2 and has crossed a critical threshold.",
         "Check the component that the sensor monitors at once."},
    };
    return messages;
}

std::string event_timestamp(long long seconds) {
    char text[32];
    const std::time_t time = static_cast<std::time_t>(seconds);
    std::tm utc{};
    gmtime_r(&time, &utc);
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S+00:00", &utc);
    return text;
}

}  // namespace platform
