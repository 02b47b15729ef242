// SNMPv2c and SNMPv3 traps with the net-snmp library.
#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>

#include <algorithm>
#include <cstring>
#include <ctime>

#include "platform/outbound_destinations.h"
#include "platform/sim/alert_engine_id.h"
#include "platform/sim/alert_send/alert_transports.h"

namespace platform::sim {
namespace {

// snmpTrapOID of every alert, and the objects it carries, under the
// experimental netSnmpPlaypen subtree.
constexpr oid alert_trap_oid[] = {1, 3, 6, 1, 4, 1, 8072, 9999, 9999, 1, 0, 1};
constexpr oid alert_object_base[] = {1, 3, 6, 1, 4, 1, 8072, 9999, 9999, 1, 1};
constexpr oid sys_uptime_oid[] = {1, 3, 6, 1, 2, 1, 1, 3, 0};
constexpr oid snmp_trap_oid_oid[] = {1, 3, 6, 1, 6, 3, 1, 1, 4, 1, 0};

void init_library() {
    netsnmp_ds_set_boolean(NETSNMP_DS_LIBRARY_ID, NETSNMP_DS_LIB_DONT_READ_CONFIGS, 1);
    netsnmp_ds_set_boolean(NETSNMP_DS_LIBRARY_ID, NETSNMP_DS_LIB_DISABLE_PERSISTENT_LOAD, 1);
    netsnmp_ds_set_boolean(NETSNMP_DS_LIBRARY_ID, NETSNMP_DS_LIB_DISABLE_PERSISTENT_SAVE, 1);
    init_snmp("bmc-alerts");
    set_exact_engineID(alert_engine_id, sizeof alert_engine_id);
    // Each trap comes from a fresh process whose engine time starts at 0:
    // the boots count, the current second, keeps growing instead, so that
    // receivers keep accepting the traps.
    std::string boots = std::to_string(std::time(nullptr) - 1);
    engineBoots_conf("engineBoots", boots.data());
}

bool set_key(const oid* protocol, size_t protocol_length, const std::string& pass, u_char* key,
             size_t& key_length) {
    key_length = USM_AUTH_KU_LEN;
    return generate_Ku(protocol, static_cast<u_int>(protocol_length),
                       reinterpret_cast<const u_char*>(pass.data()), pass.size(), key,
                       &key_length) == SNMPERR_SUCCESS;
}

bool set_v3_security(netsnmp_session& session, const trap_delivery& entry) {
    session.version = SNMP_VERSION_3;
    session.securityName = const_cast<char*>(entry.user.c_str());
    session.securityNameLen = entry.user.size();
    session.securityEngineID = const_cast<u_char*>(alert_engine_id);
    session.securityEngineIDLen = sizeof alert_engine_id;
    session.contextEngineID = const_cast<u_char*>(alert_engine_id);
    session.contextEngineIDLen = sizeof alert_engine_id;
    session.securityLevel = SNMP_SEC_LEVEL_NOAUTH;
    if (entry.authentication_protocol == 0) return true;
    const bool md5 = entry.authentication_protocol == 1;
    session.securityAuthProto =
        const_cast<oid*>(md5 ? usmHMACMD5AuthProtocol : usmHMACSHA1AuthProtocol);
    session.securityAuthProtoLen = md5 ? USM_AUTH_PROTO_MD5_LEN : USM_AUTH_PROTO_SHA_LEN;
    session.securityLevel = SNMP_SEC_LEVEL_AUTHNOPRIV;
    if (!set_key(session.securityAuthProto, session.securityAuthProtoLen, entry.authentication_key,
                 session.securityAuthKey, session.securityAuthKeyLen))
        return false;
    if (entry.encryption_protocol == 0) return true;
    const bool des = entry.encryption_protocol == 1;
    session.securityPrivProto = const_cast<oid*>(des ? usmDESPrivProtocol : usmAESPrivProtocol);
    session.securityPrivProtoLen = des ? USM_PRIV_PROTO_DES_LEN : USM_PRIV_PROTO_AES_LEN;
    session.securityLevel = SNMP_SEC_LEVEL_AUTHPRIV;
    // Privacy keys derive from the pass phrase with the authentication hash.
    return set_key(session.securityAuthProto, session.securityAuthProtoLen, entry.encryption_key,
                   session.securityPrivKey, session.securityPrivKeyLen);
}

void add_text(netsnmp_pdu* pdu, oid item, const std::string& text) {
    oid name[OID_LENGTH(alert_object_base) + 1];
    std::copy(std::begin(alert_object_base), std::end(alert_object_base), name);
    name[OID_LENGTH(alert_object_base)] = item;
    snmp_pdu_add_variable(pdu, name, OID_LENGTH(name), ASN_OCTET_STR, text.data(), text.size());
}

netsnmp_pdu* alert_pdu(const alert_content& alert, const std::string& context) {
    netsnmp_pdu* pdu = snmp_pdu_create(SNMP_MSG_TRAP2);
    const long uptime = get_uptime();
    snmp_pdu_add_variable(pdu, sys_uptime_oid, OID_LENGTH(sys_uptime_oid), ASN_TIMETICKS, &uptime,
                          sizeof uptime);
    snmp_pdu_add_variable(pdu, snmp_trap_oid_oid, OID_LENGTH(snmp_trap_oid_oid), ASN_OBJECT_ID,
                          alert_trap_oid, sizeof alert_trap_oid);
    add_text(pdu, 1, alert.message_id);
    add_text(pdu, 2, alert.message);
    add_text(pdu, 3, alert.severity);
    add_text(pdu, 4, alert.origin);
    add_text(pdu, 5, alert.timestamp);
    add_text(pdu, 6, alert.event_type);
    add_text(pdu, 7, context);
    return pdu;
}

}  // namespace

bool send_snmp_trap(const trap_delivery& entry, std::string& error) {
    if (platform::refused_after_lookup(platform::destination_host(entry.destination)))
        return error = "the destination is not allowed", false;
    init_library();
    netsnmp_session session;
    snmp_sess_init(&session);
    if (entry.type == ALERT_DEST_SNMPV3_TRAP) {
        if (!set_v3_security(session, entry)) return error = "cannot derive SNMPv3 keys", false;
    } else {
        session.version = SNMP_VERSION_2c;
        session.community = reinterpret_cast<u_char*>(const_cast<char*>(entry.community.c_str()));
        session.community_len = entry.community.size();
    }
    netsnmp_transport* transport =
        netsnmp_transport_open_client("snmptrap", entry.destination.c_str());
    if (!transport) return error = "cannot open a transport to the destination", false;
    netsnmp_session* opened = snmp_add(&session, transport, nullptr, nullptr);
    if (!opened) return error = "cannot open an SNMP session", false;
    netsnmp_pdu* pdu = alert_pdu(entry.alert, entry.context);
    const bool sent = snmp_send(opened, pdu) != 0;
    if (!sent) {
        error = snmp_api_errstring(opened->s_snmp_errno);
        snmp_free_pdu(pdu);
    }
    snmp_close(opened);
    return sent;
}

}  // namespace platform::sim
