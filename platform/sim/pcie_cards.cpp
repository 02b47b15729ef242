// Add-in cards whose chips have sensors in the SDR, and the board's slots.
#include <iterator>

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

// The OCP slot and four riser slots.
constexpr St_PcieSlot slots[] = {
    {1, 4, 16, 1}, {2, 4, 16, 0}, {3, 4, 16, 0}, {4, 4, 8, 0}, {5, 4, 8, 0},
};

constexpr int slot_count = static_cast<int>(std::size(slots));

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

extern "C" int PcieGetSlotCount(void) { return slot_count; }

extern "C" int PcieGetSlot(int index, St_PcieSlot* slot) {
    if (!slot) return PLT_ERR_ARGUMENT;
    if (index < 0 || index >= slot_count) return PLT_ERR_NOT_FOUND;
    *slot = slots[index];
    return PLT_OK;
}
