// Backup and restore of the BMC's IPMI-level configuration as one document
// (the BMC's libipmi.so): the LAN channel and its network services, the
// serial port, the user table with the users' channel privileges, enabled
// states and password hashes, and the alert destinations.
#pragma once

#include "platform/plt_result.h"

extern "C" {

enum { IPMI_CONFIG_MAX_SIZE = 262144, IPMI_CONFIG_REASON_SIZE = 160 };

// Copies the document and a NUL into text (size bytes); returns its length,
// PLT_ERR_ARGUMENT when it does not fit, PLT_ERR_FORMAT when a store is
// malformed.
int PltIPMI_BackupConfig(char* text, int size);

// Restores every setting of the document at once, or none. PLT_ERR_FORMAT
// with a reason (for the user, NUL-terminated in reason_size bytes) when
// the document is refused; PLT_ERR_IO when the stores were not written.
int PltIPMI_RestoreConfig(const char* text, int length, char* reason, int reason_size);

}  // extern "C"
