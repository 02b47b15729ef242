#include "resources/chassis/physical_security.h"

#include "frontend/answer_storage.h"
#include "platform/libipmi_sensors.h"
#include "platform/libweb.h"
#include "resources/chassis/sdr_sensors.h"

namespace odata::redfish {
namespace {

constexpr const char* intrusion_sensor_name = "Hardware Intrusion";
constexpr const char* normal_state = "Normal";
constexpr const char* intrusion_state = "HardwareIntrusion";
// The sensor latches an intrusion until it is re-armed.
constexpr const char* rearm_policy = "Manual";

boost::json::value intrusion_state_of(const St_SensorData& sensor) {
    uint8_t state_bits = 0;
    if (UtilGetSensorReading(sensor.sensor_number, &state_bits) != PLT_OK) return nullptr;
    return state_bits & INTRUSION_STATE_GENERAL ? intrusion_state : normal_state;
}

}  // namespace

boost::json::value physical_security() {
    const St_SensorData* sensor = find_sensor_named(intrusion_sensor_name);
    if (!sensor) return nullptr;
    return boost::json::object({{"IntrusionSensorNumber", sensor->sensor_number},
                                {"IntrusionSensor", intrusion_state_of(*sensor)},
                                {"IntrusionSensorReArm", rearm_policy}},
                               answer_storage());
}

const std::vector<std::string>& settable_intrusion_states() {
    static const std::vector<std::string> states{normal_state};
    return states;
}

const std::vector<std::string>& settable_rearm_policies() {
    static const std::vector<std::string> policies{rearm_policy};
    return policies;
}

bool rearm_intrusion_sensor() {
    const St_SensorData* sensor = find_sensor_named(intrusion_sensor_name);
    const int result = sensor ? UtilRearmSensorEvents(sensor->sensor_number) : PLT_ERR_NOT_FOUND;
    if (result != PLT_OK) console_log("[Chassis] intrusion sensor not re-armed: %d\n", result);
    return result == PLT_OK;
}

}  // namespace odata::redfish
