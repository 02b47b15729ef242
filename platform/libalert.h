// The BMC's alert-destination table and alert delivery (the BMC's
// libipmi.so). Each of the 16 entries sends events as SNMP traps, SNMPv3
// traps, e-mail or Redfish events.
#pragma once

#include <cstdint>

extern "C" {

enum {
    ALERT_DEST_COUNT = 16,
    ALERT_TABLE_MUTEX = 2,  // lx_mutex id of the alert-destination table
    ALERT_DEST_SNMP_TRAP = 0,
    ALERT_DEST_SMTP = 1,
    ALERT_DEST_REDFISH = 2,
    ALERT_DEST_SNMPV3_TRAP = 3,
};

// Event type bits of an entry; an entry without any receives every type.
enum {
    ALERT_EVENT_STATUS_CHANGE = 1,
    ALERT_EVENT_RESOURCE_UPDATED = 2,
    ALERT_EVENT_RESOURCE_ADDED = 4,
    ALERT_EVENT_RESOURCE_REMOVED = 8,
    ALERT_EVENT_ALERT = 16,
};

struct St_AlertDest {
    uint8_t enabled;
    uint8_t type;  // ALERT_DEST_*
    uint8_t event_types;
    char destination[256];  // URL, host[:port] of a trap receiver, or mail address
    char context[256];
    char community[33];
    char snmp_user[33];
    uint8_t authentication_protocol;  // 0 none, 1 HMAC-MD5, 2 HMAC-SHA1
    char authentication_key[65];
    uint8_t encryption_protocol;  // 0 none, 1 DES, 2 AES-128
    char encryption_key[65];
    char smtp_subject[129];
    char smtp_user[65];
};

// One event as the destinations receive it; null texts read as empty.
struct St_AlertEvent {
    const char* event_type;  // "Alert", "StatusChange", ...
    const char* event_id;
    const char* severity;
    const char* timestamp;
    const char* message;
    const char* message_id;
    const char* const* message_args;
    int message_arg_count;
    const char* origin;  // URI of the resource the event is about
    const char* event_dir_and_type;
    const char* sensor_type;
    const char* sensor_name;
    // The Redfish event document that Redfish and e-mail destinations
    // receive as it is, made for the entry (its context).
    const char* document;
};

// Reads entry index (0 to 15); 0 on success.
int get_config_alert_dest(int index, St_AlertDest* entry);
// 1 when the entry is enabled, 0 when not, -1 for a bad index.
int get_config_alter_enable(int index);

// Changes of an entry, made while lx_mutex_get(ALERT_TABLE_MUTEX) is held
// and kept until PSCommit; 0 on success, -1 without the lock, for a bad
// index or for a text too long for its field.
int set_config_alert_dest(int index, const char* destination);
int set_config_alert_proto(int index, int type);
int set_config_alert_type(int index, int event_types);
int set_config_alert_context(int index, const char* context);
int set_config_alert_community(int index, const char* community);
// A null key keeps the stored key.
int set_config_alert_snmpv3(int index, const char* user, int authentication_protocol,
                            const char* authentication_key, int encryption_protocol,
                            const char* encryption_key);
int set_smtp_paramters(int index, const char* subject, const char* user);
int enable_pef_filter(int index, int enable);
int clean_alert_dest(int index);

// 1 when text can be an SNMPv2c community string.
int isVaildSNMPv2CMString(const char* text);

// Start delivering one event to one entry in a detached process and return
// at once; 0 when the delivery was started. Each checks the entry's type;
// Redfish events need the event's document.
int SendAlertTrapViaLAN(int index, const St_AlertEvent* event);
int SendAlertTrapV3ViaLAN(int index, const St_AlertEvent* event);
int SendSMTPEvtViaLAN(int index, const St_AlertEvent* event);
int SendRedfishEvent(int index, const St_AlertEvent* event);
// The one of the four that the entry's type calls for.
int SendAlertEvent(int index, const St_AlertEvent* event);

}  // extern "C"
