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

// One PCIe slot of the board.
struct St_PcieSlot {
    uint8_t slot;          // 1-based
    uint8_t generation;    // 4: PCIe Gen4
    uint8_t lanes;         // the slot's width
    uint8_t ocp;           // 1: an OCP 3.0 small form factor slot
    uint8_t network_card;  // the network adapter in it (libnic.h), 0 when none
};

int PcieGetSlotCount(void);

// The slot at a 0-based index; PLT_ERR_NOT_FOUND past the last one.
int PcieGetSlot(int index, St_PcieSlot* slot);

}  // extern "C"
