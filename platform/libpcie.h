// PCIe add-in cards (the BMC's libipmi.so). Return codes are those of
// plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

// The network adapter (1-based index, as in /Chassis/1/NetworkAdapters/<n>)
// whose chip the sensor measures; PLT_ERR_NOT_FOUND when the sensor
// belongs to no add-in card.
int PcieCardGetChip(uint8_t sensor_number, int* card_index);

}  // extern "C"
