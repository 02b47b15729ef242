// SMBIOS structures of the host, parsed from the structure table that the
// BIOS hands to the BMC (/nv/bios/bios_fullsmbios). Return codes are those
// of plt_result.h.
//
//     St_SMBiosData smbios{};
//     if (GetType1List(&smbios) == PLT_OK && smbios.type1_count > 0) ...
//     FreeSMBiosData(&smbios);
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

// String fields point into storage owned by the list; null when the
// structure has no such string.

// System information.
struct St_SMBiosType1 {
    uint16_t handle;
    const char* manufacturer;
    const char* product_name;
    const char* version;
    const char* serial_number;
    uint8_t uuid[16];    // as stored
    char uuid_text[37];  // canonical lower-case text; empty when the UUID
                         // is absent, all zero or all 0xFF
    uint8_t wake_up_type;
    const char* sku_number;
    const char* family;
};

// Processor status bits.
enum {
    SMBIOS_CPU_SOCKET_POPULATED = 0x40,
    SMBIOS_CPU_STATUS_MASK = 0x07,
    SMBIOS_CPU_STATUS_ENABLED = 0x01,
};

// Processor information.
struct St_SMBiosType4 {
    uint16_t handle;
    const char* socket_designation;
    uint8_t processor_type;     // 3: central processor
    uint16_t processor_family;  // the family 2 field when family reads 0xFE
    const char* manufacturer;
    uint64_t processor_id;
    const char* version;
    uint16_t max_speed_mhz;
    uint16_t current_speed_mhz;
    uint8_t status;  // SMBIOS_CPU_* bits
    const char* serial_number;
    const char* asset_tag;
    const char* part_number;
    uint16_t core_count;  // the 16-bit fields when the 8-bit ones read 0xFF
    uint16_t core_enabled;
    uint16_t thread_count;
};

enum { SMBIOS_MEMORY_SIZE_UNKNOWN = 0xFFFFFFFFu };

// Memory device (one module slot).
struct St_SMBiosType17 {
    uint16_t handle;
    uint16_t array_handle;
    uint16_t total_width_bits;
    uint16_t data_width_bits;
    uint32_t size_mib;    // 0: slot empty; the extended size decoded;
                          // SMBIOS_MEMORY_SIZE_UNKNOWN when not known
    uint8_t form_factor;  // 0x09: DIMM
    const char* device_locator;
    const char* bank_locator;
    uint8_t memory_type;  // 0x1A: DDR4, 0x22: DDR5
    uint32_t speed_mts;   // 0 unknown
    const char* manufacturer;
    const char* serial_number;
    const char* asset_tag;
    const char* part_number;
    uint8_t rank;  // 0 unknown
    uint32_t configured_speed_mts;
};

// The lists of one caller; start zero-initialised.
struct St_SMBiosData {
    St_SMBiosType1* type1;
    int type1_count;
    St_SMBiosType4* type4;
    int type4_count;
    St_SMBiosType17* type17;
    int type17_count;
};

// Each reads and checks the whole table and fills the list of its type in
// data (replacing one it held): PLT_ERR_FORMAT when the table is truncated
// or corrupt (the list is then empty), PLT_ERR_IO when it cannot be read.
int GetType1List(St_SMBiosData* data);
int GetType4List(St_SMBiosData* data);
int GetType17List(St_SMBiosData* data);

// Releases every list in data and zeroes it.
void FreeSMBiosData(St_SMBiosData* data);

}  // extern "C"
