// The BMC user table, lockout and login audit (the BMC's libipmi.so).
// Slots 0 to 15; slot 0 is reserved, slot 1 is the first administrator.
#pragma once

#include <cstdint>

extern "C" {

enum {
    MAX_USER_SLOTS = 16,
    MAX_USER_NAME_LEN = 16,  // names compare on their first 16 characters
    PRIV_CALLBACK = 1,
    PRIV_USER = 2,
    PRIV_OPERATOR = 3,
    PRIV_ADMINISTRATOR = 4,
    PRIV_NO_ACCESS = 15,
    USER_TABLE_MUTEX = 1,  // lx_mutex id of the user table
};

// One slot as LibInitUserInfo loads it; no password material.
struct St_UserInfo {
    uint32_t key;  // zero for an empty slot
    char name[MAX_USER_NAME_LEN + 1];
    uint8_t lan_privilege;
    uint8_t enabled;
};

// Cross-process lock of the user table; 0 on success. Changes made under
// it that were not committed are dropped when it is put.
int lx_mutex_get(int mutex_id);
int lx_mutex_put(int mutex_id);

// Select a slot, then load its record.
void LibSetUserIndex(int slot);
int LibGetUserIndex(void);
int LibInitUserInfo(St_UserInfo* info);

// Privilege level of a slot (PRIV_*), PRIV_NO_ACCESS for an empty slot.
int UtilGetLANPriv(int slot);
int UtilSetLANPriv(int slot, int level);
// Non-zero when another slot already has the name.
int UtilIsValidUserName(const char* name, int slot);
// The enabled slot with this name (first 16 characters), or -1.
int UtilFindUser(const char* name);
// Zero when the password is the slot's. Any other slot (-1 for a name that
// is no user) takes as long to refuse as a wrong password.
int UtilCheckUserPassword(int slot, const char* password);
// Setters return 0 on success. Changes are kept in memory until PSCommit.
int UtilSetUserName(int slot, const char* name);
int UtilSetUserPassword(int slot, const char* password);
int UtilSetUserEnable(int slot, int enable);
int UtilDelUserName(int slot);
int UtilDelUserPassword(int slot);
int clear_user_privilege(int slot);
// Writes the changed user table to persistent storage; 0 on success.
int PSCommit(void);

// Password complexity: the switch, and the test (0 = acceptable).
int UtilGetPasswordComplexity(void);
int UtilPasswordCheck(const char* password);

// Bad-password records, kept per subject: the platform stores them; what
// they mean (when a subject is locked, and for how long) is the caller's
// policy. A subject is a text of 1 to MAX_BAD_PWD_SUBJECT_LEN printable
// bytes; those of a user's slot begin "slot:<slot>:". At most
// MAX_BAD_PWD_SUBJECTS are kept: a new one pushes out the one changed
// longest ago, subjects of slots last. Times are lx_time_get() seconds.
enum {
    MAX_BAD_PWD_SUBJECTS = 256,
    MAX_BAD_PWD_SUBJECT_LEN = 127,
    MAX_BAD_PWD_TIMES = 16,  // the most recent failures of a subject kept
};

struct St_BadPwdRecord {
    int32_t failures;   // made at counted_since or later
    int64_t locked_at;  // 0 when not locked
};

// The subject's record; zeros when there is none. 0, or negative when the
// records cannot be read.
int GetBadPwdRecords(const char* subject, int64_t counted_since, St_BadPwdRecord* record);
// Adds a failure made at now, forgetting those made before counted_since;
// the failures then held, or negative when they cannot be stored.
int AddBadPwdRecords(const char* subject, int64_t now, int64_t counted_since);
// Marks the subject locked from locked_at and forgets its failures; 0 on
// success.
int LockBadPwdSubject(const char* subject, int64_t locked_at);
// Forgets the subject's failures and lock; 0 on success.
int ClearBadPwdRecords(const char* subject);
// Forgets every subject of the slot; 0 on success.
int UnlockUser(int slot);

// Host interface: whether it is enabled, and whether this request came over
// it (it arrived on one of the interface's own addresses). The host
// firmware's credential: whether name and password match it, or with a null
// password whether it exists under that name.
int UtilGetHostInterfaceEnable(void);
int UtilIsHostInterface(void);
// Turns the host interface on (1) or off (0).
int UtilSetHostInterface(int enabled);
int UtilIsExistHostFWUserInfo(const char* name, const char* password);

// The host's side of the host interface: the network interface (a USB NIC)
// that the host sees, with the IPv4 address the host is to use on it.
struct St_HostIfHostNic {
    char mac_address[18];  // "02:1a:2b:3c:4d:02"
    char ipv4_address[16];
    char subnet_mask[16];
};
int UtilGetHostInterfaceHostNic(St_HostIfHostNic* nic);

// Login audit record and open sessions of a slot.
int UtilSessionAduit(const char* name, const char* client_ip, int login);
int UtilIsUserActivateSession(int slot);

// System lockdown: with set 0 returns the state; with set 1 stores value.
int GetSetSysLockdownEnable(int set, int value);

// SNMPv3 user settings of a slot.
int UtilSNMPSaveCfg(int slot, int authentication_protocol, const char* authentication_key,
                    int encryption_protocol, const char* encryption_key);
int UtilSNMPGetCfg(int slot, int* authentication_protocol, int* authentication_key_set,
                   int* encryption_protocol, int* encryption_key_set);
int setSNMPDaemonOP(int operation);

}  // extern "C"
