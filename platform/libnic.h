// Ports of the host's network adapters, as the BMC learns them from the
// adapters' management controllers (the BMC's libipmi.so). Return codes are
// those of plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

// One network adapter of the host.
struct St_HostNicAdapter {
    uint8_t adapter;  // 1-based, as in /Chassis/1/NetworkAdapters/<n>
    uint8_t slot;     // the PCIe slot it sits in (libpcie.h), 1-based
    uint8_t port_count;
    uint16_t vendor_id;  // PCI identifiers
    uint16_t device_id;
    uint16_t subsystem_vendor_id;
    uint16_t subsystem_id;
    char manufacturer[32];
    char model[48];
    char part_number[24];
    char serial_number[24];
    char firmware_version[24];
};

int NicGetAdapterCount(void);

// The adapter at a 0-based index; PLT_ERR_NOT_FOUND past the last one.
int NicGetAdapter(int index, St_HostNicAdapter* adapter);

struct St_HostNicPort {
    uint8_t adapter;          // 1-based, as in /Chassis/1/NetworkAdapters/<n>
    uint8_t port;             // 1-based on its adapter
    char mac_address[18];     // "3c:fd:fe:a0:00:01"
    uint8_t link_up;          // 1 while the link is up
    uint32_t speed_mbps;      // 0 while the link is down
    uint32_t max_speed_mbps;  // what the port supports
};

int NicGetPortCount(void);

// The port at a 0-based index; PLT_ERR_NOT_FOUND past the last one.
int NicGetPort(int index, St_HostNicPort* port);

}  // extern "C"
