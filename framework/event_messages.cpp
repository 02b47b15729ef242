#include "framework/event_messages.h"

namespace odata::redfish {

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
        {"TaskCancelled", "Warning", "The task with Id '%1' has been cancelled.", "None."},
        {"TaskWorkerEnded", "Critical", "The process working on the task ended unexpectedly.",
         "Start the operation again."},
        {"FirmwareUpdateCompleted", "OK", "%1", "None."},
        {"FirmwareUpdateFailed", "Critical", "%1",
         "Check the image and where it comes from, then start the update again."},
        {"DumpGenerated", "OK", "%1", "None."},
        {"DumpFailed", "Critical", "%1",
         "Start the dump again; remove older dumps if the store is full."},
        {"StorageOperationCompleted", "OK", "%1", "None."},
        {"StorageOperationFailed", "Critical", "%1",
         "Check the drives and the controller, then start the operation again."},
    };
    return messages;
}

}  // namespace odata::redfish
