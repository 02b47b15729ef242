// BIOS version and the BMC's path to the BIOS configuration (the BMC's
// libipmi.so). Return codes are those of plt_result.h.
#pragma once

#include "platform/plt_result.h"

extern "C" {

// The running BIOS's version string (SMBIOS BIOS information), truncated to
// size - 1 characters; PLT_ERR_FORMAT when the SMBIOS table is corrupt.
int UtilGetLatestBiosRev(char* version, int size);

// 1 when the BIOS takes its settings through the HII configuration daemon
// (boot order pushed with UtilHiiSetBootOrder), 0 otherwise.
int isNewHIISupport(void);

// Hands the boot order (count boot option names such as "Boot0001", each
// printable and without ',') to the HII daemon for the next boot;
// PLT_ERR_STATE when the BIOS has no HII support.
int UtilHiiSetBootOrder(const char* const* boot_options, int count);

// Kinds of BIOS setup attribute.
enum {
    BIOS_ATTRIBUTE_ENUMERATION = 1,
    BIOS_ATTRIBUTE_INTEGER = 2,
    BIOS_ATTRIBUTE_STRING = 3,
    BIOS_ATTRIBUTE_BOOLEAN = 4,
};

// One attribute of the BIOS setup. Its current value is in the BIOS's
// /tmp/attributes.json, as JSON of its kind.
struct St_BiosAttribute {
    const char* name;  // "HyperThreading"
    const char* display_name;
    int type;                   // BIOS_ATTRIBUTE_*
    const char* const* values;  // enumeration: the allowed values, ending in null
    long lower_bound;           // integer
    long upper_bound;
    int max_length;  // string
    int read_only;
    const char* default_value;  // as text: "Enabled", "5", "true"
};

// The attributes of the host's BIOS setup, in setup order; the table
// belongs to the library and lives as long as the process.
int UtilGetBiosAttributeTable(const St_BiosAttribute** table, int* count);

// Replaces the file at the BMC path (absolute, without "..") with content,
// as a whole: a reader never sees part of it.
int WriteConfigFile(const char* path, const char* content);

}  // extern "C"
