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
// malformed. Without with_secrets the users' password hashes and the SNMPv3
// keys are left empty.
int PltIPMI_BackupConfig(char* text, int size, int with_secrets);

// Restores every setting of the document at once, or none. A user slot
// without a password hash keeps the stored one when it holds the same user,
// and an SNMPv3 destination without keys keeps the stored keys when it has
// the same SNMPv3 user. PLT_ERR_FORMAT with a reason (for the user,
// NUL-terminated in reason_size bytes) when the document is refused;
// PLT_ERR_STATE, changing nothing, when it would change the user table and
// may_change_users is 0; PLT_ERR_IO when the stores were not written.
int PltIPMI_RestoreConfig(const char* text, int length, int may_change_users, char* reason,
                          int reason_size);

}  // extern "C"
