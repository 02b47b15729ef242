// PCIe add-in cards and devices (the BMC's libipmi.so). Return codes are
// those of plt_result.h.
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
    uint8_t slot;        // 1-based
    uint8_t generation;  // 4: PCIe Gen4
    uint8_t lanes;       // the slot's width
    uint8_t ocp;         // 1: an OCP 3.0 small form factor slot
};

int PcieGetSlotCount(void);

// The slot at a 0-based index; PLT_ERR_NOT_FOUND past the last one.
int PcieGetSlot(int index, St_PcieSlot* slot);

// What a PCIe device is, as the BMC's inventory names it.
enum {
    PCIE_KIND_NIC = 0,       // a network adapter (libnic.h)
    PCIE_KIND_GPU = 1,       // a graphics or compute accelerator
    PCIE_KIND_NVME_SSD = 2,  // an NVMe drive in a drive bay
    PCIE_KIND_PCIE_SSD = 3,  // a solid-state drive on an add-in card
    PCIE_KIND_COUNT = 4,
};

// Bounds of the inventory: devices of one kind, devices in all, functions
// of one device (a PCIe device has at most 8).
enum { PCIE_KIND_DEVICES_MAX = 8, PCIE_DEVICES_MAX = 24, PCIE_FUNCTIONS_MAX = 8 };

// One PCIe device of the host, with what its configuration space, its
// vital product data and the link training tell.
struct St_PcieDevice {
    uint8_t kind;            // PCIE_KIND_*
    uint8_t number;          // 1-based among the devices of its kind
    uint8_t slot;            // the PCIe slot it sits in, 1-based; 0 in a drive bay
    uint8_t bay;             // the drive bay, 1-based; 0 in a slot
    uint8_t function_count;  // 1 to PCIE_FUNCTIONS_MAX
    uint8_t generation;      // the link now: 4 is Gen4; 0 while it is down
    uint8_t max_generation;  // what the device supports
    uint8_t lanes;           // the link's width now
    uint8_t max_lanes;
    uint16_t vendor_id;  // PCI identifiers, the same for every function
    uint16_t device_id;
    uint16_t subsystem_vendor_id;
    uint16_t subsystem_id;
    uint32_t class_code;  // base class, subclass, programming interface: 0x010802
    char manufacturer[32];
    char model[48];
    char part_number[24];
    char serial_number[24];
    char firmware_version[24];
};

int PcieGetDeviceCount(void);

// The device at a 0-based index, ordered by kind and number;
// PLT_ERR_NOT_FOUND past the last one.
int PcieGetDevice(int index, St_PcieDevice* device);

}  // extern "C"
