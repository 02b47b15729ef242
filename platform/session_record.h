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
};

struct St_RedfishSession {
    char last_use[15];  // decimal seconds, NUL-terminated
    char user_name[16];
    char client_ip[61];
    int32_t session_id;  // 1 to 16
    int32_t privilege;   // the user's privilege level
    char token[SESSION_TOKEN_LEN + 1];
    uint8_t source;                               // session_source
    uint8_t reserved[SESSION_RECORD_SIZE - 134];  // the fields above end at byte 134
};

static_assert(sizeof(St_RedfishSession) == SESSION_RECORD_SIZE, "session record is 244 bytes");

}  // extern "C"
