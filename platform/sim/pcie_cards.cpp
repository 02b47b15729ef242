// Add-in cards whose chips have sensors in the SDR.
#include "platform/libpcie.h"
#include "platform/sim/sdr_repository.h"

namespace {

struct card_sensor {
    const char* sensor_name;
    int network_adapter;
};

constexpr card_sensor card_sensors[] = {
    {"OCP_NIC Temp", 1},
};

}  // namespace

extern "C" int PcieCardGetChip(uint8_t sensor_number, int* card_index) {
    if (!card_index) return PLT_ERR_ARGUMENT;
    for (const card_sensor& each : card_sensors) {
        const St_SensorData* record = platform::find_sensor_by_name(each.sensor_name);
        if (record && record->sensor_number == sensor_number) {
            *card_index = each.network_adapter;
            return PLT_OK;
        }
    }
    return PLT_ERR_NOT_FOUND;
}
