// What a delivery process is told to send, one structure per transport.
// It travels as JSON on the process's standard input, so that keys and
// passwords never appear on its command line.
#pragma once

#include <boost/describe/class.hpp>
#include <boost/json.hpp>
#include <string>

#include "platform/alert_settings.h"
#include "platform/libalert.h"
#include "platform/sim/alert_payload.h"

namespace platform {
BOOST_DESCRIBE_STRUCT(smtp_settings, (),
                      (service_enabled, server_address, port, from_address, connection_protocol,
                       authentication, username, password))
}  // namespace platform

namespace platform::sim {

BOOST_DESCRIBE_STRUCT(alert_content, (),
                      (event_type, event_id, severity, timestamp, message, message_id, message_args,
                       origin, event_dir_and_type, sensor_type, sensor_name))

struct redfish_delivery {
    std::string url;
    std::string body;
};
BOOST_DESCRIBE_STRUCT(redfish_delivery, (), (url, body))

struct mail_delivery {
    smtp_settings smtp;
    std::string recipient;
    std::string message;
};
BOOST_DESCRIBE_STRUCT(mail_delivery, (), (smtp, recipient, message))

// The fields of an SNMP alert-destination entry that a trap needs.
struct trap_delivery {
    int type;  // ALERT_DEST_SNMP_TRAP or ALERT_DEST_SNMPV3_TRAP
    std::string destination;
    std::string community;
    std::string user;
    int authentication_protocol;
    std::string authentication_key;
    int encryption_protocol;
    std::string encryption_key;
    std::string context;
    alert_content alert;
};
BOOST_DESCRIBE_STRUCT(trap_delivery, (),
                      (type, destination, community, user, authentication_protocol,
                       authentication_key, encryption_protocol, encryption_key, context, alert))

trap_delivery trap_for(const St_AlertDest& entry, const alert_content& alert);

template <class delivery>
std::string request_text(const delivery& request) {
    return boost::json::serialize(boost::json::value_from(request));
}

}  // namespace platform::sim
