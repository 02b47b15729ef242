// The record of one Redfish session, /tmp/redfish_<token>, shared with the
// BMC's other programs.
#pragma once

#include <cstdint>

extern "C" {

enum {
    SESSION_RECORD_SIZE = 244,
    SESSION_TOKEN_LEN = 32,
};

// How the session's user was authenticated.
enum session_source : uint8_t {
    SESSION_SOURCE_LOCAL = 0,
    SESSION_SOURCE_LDAP = 1,
    SESSION_SOURCE_AD = 2,
    SESSION_SOURCE_RADIUS = 3,
    SESSION_SOURCE_HOST_INTERFACE = 4,  // the host firmware's credential
};

struct St_RedfishSession {
    char last_use[15];   // decimal seconds, NUL-terminated
    char user_name[16];  // NUL-padded; a 16-character name fills it
    char client_ip[61];
    int32_t session_id;  // 1 to 16
    int32_t privilege;   // the user's privilege level
    char token[SESSION_TOKEN_LEN + 1];
    uint8_t source;       // session_source
    int8_t account_slot;  // the local user's slot, -1 for others
    uint8_t padding;
    uint32_t account_key;  // the slot's record key when the session was opened
    uint8_t reserved[SESSION_RECORD_SIZE - 140];  // the fields above end at byte 140
};

static_assert(sizeof(St_RedfishSession) == SESSION_RECORD_SIZE, "session record is 244 bytes");

}  // extern "C"
