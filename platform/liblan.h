// The BMC's dedicated LAN channel and the network services it runs (the
// BMC's libipmi.so). Return codes are those of plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

enum { LAN_ADDRESS_SIZE = 16, LAN_HOST_NAME_SIZE = 64, LAN_MAC_SIZE = 18, LAN_NAME_SERVERS = 2 };

struct St_LanConfig {
    char mac_address[LAN_MAC_SIZE];  // "02:00:5e:10:00:01"
    uint8_t link_up;
    uint16_t speed_mbps;
    uint8_t dhcp_enabled;
    // Dotted quads: the address in use (leased while DHCP is on).
    char ipv4_address[LAN_ADDRESS_SIZE];
    char subnet_mask[LAN_ADDRESS_SIZE];
    char gateway[LAN_ADDRESS_SIZE];
    char host_name[LAN_HOST_NAME_SIZE];
    // The DNS domain and name servers in use (from the lease while DHCP is
    // on); empty texts where there are none.
    char domain_name[LAN_HOST_NAME_SIZE];
    char name_servers[LAN_NAME_SERVERS][LAN_ADDRESS_SIZE];
};

int PltLAN_GetConfig(St_LanConfig* config);

// Applies dhcp_enabled, the three addresses and host_name; the hardware
// fields and the DNS settings are ignored. PLT_ERR_ARGUMENT when an address is not a dotted quad,
// the mask is not contiguous or the host name is empty or has control
// characters.
int PltLAN_SetConfig(const St_LanConfig* config);

enum {
    NET_SERVICE_HTTP,
    NET_SERVICE_HTTPS,
    NET_SERVICE_IPMI,
    NET_SERVICE_SSH,
    NET_SERVICE_NTP,
    NET_SERVICE_SNMP,
    NET_SERVICE_COUNT
};

struct St_NetService {
    uint8_t enabled;
    uint16_t port;
};

// PLT_ERR_ARGUMENT for a service outside 0..NET_SERVICE_COUNT-1.
int PltNET_GetService(int service, St_NetService* state);
// The same, and for port 0.
int PltNET_SetService(int service, const St_NetService* state);

// Whether IPMI over LAN sessions must prove their user's key in the RAKP
// exchange (1); 0 also lets cipher suite 0 (no authentication) in.
int PltIPMI_GetRakpRequired(void);
int PltIPMI_SetRakpRequired(int required);

}  // extern "C"
