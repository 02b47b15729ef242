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
// BIOS_FILE_ATTRIBUTES (BiosSharedFile below), as JSON of its kind.
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

// The files that the BMC shares with the BIOS and its agents.
enum {
    BIOS_FILE_ATTRIBUTES,             // setup attributes as the BIOS last reported them
    BIOS_FILE_SETTINGS_REQUEST,       // attribute changes for the BIOS's next boot
    BIOS_FILE_SETTINGS_REQUEST_LOCK,  // the lock of the request's writers
    BIOS_FILE_SAVING_RESULT,          // the BIOS's answer to the last request
    BIOS_FILE_BOOT_NEXT_REQUEST,      // a BootNext for the next boot
    BIOS_FILE_BOOT_SETTINGS,          // BootOrder and BootNext as the BIOS reported them
    BIOS_FILE_FEATURE_FLAGS,          // what the BIOS supports ("UefiBootNext")
    BIOS_FILE_HII_RESTORE_SETTINGS,   // a BootNext pending with the HII daemon
    BIOS_FILE_BOOT_RESTORE_SETTINGS,  // a BootNext pending without it
    BIOS_FILE_RESTORE_SETTINGS,
};
// The BMC path (absolute, for bmc_path) of such a file; null for another.
const char* BiosSharedFile(int file);

// The BIOS's passwords. The BIOS takes a new one at its next start; until
// then the old one stays in force.
enum { BIOS_PASSWORD_ADMINISTRATOR };
enum { BIOS_PASSWORD_MAX_LENGTH = 20 };  // printable ASCII characters

// Hands new_password (1 to BIOS_PASSWORD_MAX_LENGTH printable ASCII
// characters) to the BIOS when old_password is the one in force ("" when
// none is set). PLT_ERR_STATE for a wrong old password, PLT_ERR_ARGUMENT for
// another password or a new one the BIOS does not take.
int UtilBiosChangePassword(int password, const char* old_password, const char* new_password);

// The UEFI Secure Boot key databases: the number of entries in each. With
// no platform key (PK) the firmware is in setup mode.
struct St_SecureBootKeys {
    int pk;
    int kek;
    int db;
    int dbx;
};
int UtilGetSecureBootKeys(struct St_SecureBootKeys* keys);

enum {
    SECURE_BOOT_RESET_ALL_KEYS_TO_DEFAULT,
    SECURE_BOOT_DELETE_ALL_KEYS,
    SECURE_BOOT_DELETE_PK,
};
// Resets or deletes the key databases; PLT_ERR_ARGUMENT for another reset.
int UtilSecureBootResetKeys(int reset);

// Replaces the file at the BMC path (absolute, without "..") with content,
// as a whole: a reader never sees part of it.
int WriteConfigFile(const char* path, const char* content);

}  // extern "C"
