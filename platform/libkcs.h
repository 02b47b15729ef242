// The privilege limit of the host's KCS (system interface) channel (the
// BMC's libipmi.so): IPMI commands from the host run with at most this
// privilege level.
#pragma once

#include "platform/plt_result.h"

extern "C" {

enum { KCS_CHANNEL = 2 };

enum {
    KCS_PRIV_CALLBACK = 1,
    KCS_PRIV_USER = 2,
    KCS_PRIV_OPERATOR = 3,
    KCS_PRIV_ADMINISTRATOR = 4,
};

// The level of channel KCS_CHANNEL; a negative plt_result code for another
// channel or an unreadable store.
int UtilGetKCSPrivilege(int channel);
// PLT_ERR_ARGUMENT for a level outside 1..4, PLT_ERR_NOT_FOUND for
// another channel.
int UtilSetKCSPrivilege(int channel, int level);

}  // extern "C"
