// Shared BMC state and event log (the BMC's libipmi.so).
#pragma once

#include <cstdint>

extern "C" {

// The BMC's shared parameter block, one per BMC, read and written in place
// by every process that has attached it with GlobalParaInit.
struct St_GlobalVar {
    uint32_t layout_magic;  // the platform's own check of the block's layout
    uint32_t layout_size;
    uint8_t fcgi_mode;       // 1 once a Redfish service process is serving
    uint8_t boot_flags[2];   // IPMI boot-flags parameter 5, data bytes 1 and 2
    uint8_t identify_state;  // 1 while the identify light blinks for Redfish
    uint8_t identify_blink;  // non-zero while it blinks for another cause
    uint8_t identify_lit;    // non-zero while it is steadily on
    uint8_t node_manager_present;
    uint8_t power_cycle_byte;
    uint32_t fw_update_flags;  // bit value 2: BIOS in update mode
    char node_serial_number[32];
    char node_part_number[32];
    uint16_t sensor_count;  // records in the SDR repository
};

// The channel record of the current request, read by the platform's audit
// and event-log functions.
struct St_InterfaceInfo {
    uint8_t kind;       // 5: Redfish
    uint8_t privilege;  // authenticated privilege level, 0 before
    char client_ip[61];
    char user_name[256];
};

extern St_GlobalVar* at_p_St_GlobalVar;
extern St_InterfaceInfo* InterfaceInfo;

// Attach the shared block; non-zero on success.
int GlobalParaInit(void);
void GlobalParaFin(void);
// Checks the attached block's backing before it is touched again: a block
// emptied or truncated by someone is initialised afresh (and logged), so
// that no access faults. Non-zero when it had to be; its flags then hold
// their defaults.
int GlobalParaCheck(void);

// Fill buffer (of length bytes) with the client's address; 0 on success.
int GetClientIP(char* buffer, int length);

// Append one record to the BMC event log.
int LibSaveSysEvtLog(int event_code, int argument, const char* text);

// Seconds since the epoch, as the BMC keeps time.
long long lx_time_get(void);

}  // extern "C"

extern "C" {
// Non-zero when the host supports crash dumps through the BMC.
int is_ACD_crashdump_supported(void);
}
