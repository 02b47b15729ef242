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

// VLANs of a port, numbered 1 to NIC_MAX_VLANS on it; a number keeps its
// VLAN until the VLAN is deleted.
// Two VLANs of a port never share an id: a change that would make them
// answers NIC_ERR_VLAN_ID_IN_USE.
enum { NIC_MAX_VLANS = 8, NIC_MAX_VLAN_ID = 4094, NIC_ERR_VLAN_ID_IN_USE = -20 };

struct St_HostNicVlan {
    uint8_t number;  // 1-based on its port
    uint8_t enabled;
    uint16_t vlan_id;  // 0 to NIC_MAX_VLAN_ID
};

// The VLANs of the port at a 0-based index into vlans (NIC_MAX_VLANS
// entries), by number; returns how many, or a negative code.
int NicGetVlans(int port_index, St_HostNicVlan* vlans);
// Adds a VLAN under the lowest free number, which it returns;
// PLT_ERR_STATE when the port has NIC_MAX_VLANS.
int NicAddVlan(int port_index, uint16_t vlan_id, uint8_t enabled);
// Replaces a VLAN's settings; PLT_ERR_NOT_FOUND for a number not in use.
int NicSetVlan(int port_index, const St_HostNicVlan* vlan);
int NicDeleteVlan(int port_index, int number);

}  // extern "C"
