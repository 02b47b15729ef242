// Remote syslog of the BMC's event log (the BMC's libipmi.so): while it is
// enabled, each new event-log line is sent to the destination as one UDP
// datagram, without waiting for the network, from the process that logs
// it. Destinations the BMC may not reach (outbound_destinations.h) get
// nothing. Return codes are those of plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

enum { SYSLOG_ADDRESS_SIZE = 16 };  // a dotted IPv4 address and a NUL

struct St_SyslogConfig {
    uint8_t enabled;
    char address[SYSLOG_ADDRESS_SIZE];  // "" while none is set
    uint16_t port;                      // 1 .. 65535, UDP
};

int PltSYSLOG_GetConfig(St_SyslogConfig* config);
// PLT_ERR_ARGUMENT for port 0, an address that is not a dotted IPv4
// address, or enabled without an address.
int PltSYSLOG_SetConfig(const St_SyslogConfig* config);

}  // extern "C"
