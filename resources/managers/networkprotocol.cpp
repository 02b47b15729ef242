#include "resources/managers/networkprotocol.h"

#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "platform/libipmi_sensors.h"
#include "platform/liblan.h"
#include "platform/libntp.h"
#include "platform/libweb.h"
#include "resources/managers/certificate_uris.h"
#include "resources/managers/lan_dns.h"
#include "resources/managers/manager_uris.h"
#include "resources/managers/ntp.h"

namespace odata::redfish {
namespace {

struct protocol_property {
    const char* name;
    int service;  // NET_SERVICE_*
};

constexpr protocol_property protocols[] = {
    {"HTTP", NET_SERVICE_HTTP}, {"HTTPS", NET_SERVICE_HTTPS}, {"IPMI", NET_SERVICE_IPMI},
    {"SSH", NET_SERVICE_SSH},   {"NTP", NET_SERVICE_NTP},     {"SNMP", NET_SERVICE_SNMP},
};

// The servers of the manager's NTP settings (Oem/Tarnwright/NTP).
boost::json::array ntp_servers() {
    St_NtpConfig config;
    return PltNTP_GetConfig(&config) == PLT_OK ? configured_ntp_servers(config)
                                               : boost::json::array{};
}

}  // namespace

networkprotocol::networkprotocol(request_context& context)
    : redfish(context, "ManagerNetworkProtocol",
              std::string(schema_file_of("ManagerNetworkProtocol").version),
              "Manager Network Protocol", manager_network_protocol_uri) {}

int networkprotocol::get(request_context&) {
    set_common_properties();
    set("Description", "Network services of the BMC");
    St_LanConfig lan;
    if (PltLAN_GetConfig(&lan) == PLT_OK) {
        set("HostName", lan.host_name);
        set("FQDN", lan_fqdn(lan));
    }
    set("Status", status_object(SENSOR_HEALTH_OK));
    for (const protocol_property& protocol : protocols) {
        St_NetService state;
        if (PltNET_GetService(protocol.service, &state) != PLT_OK) {
            console_log("[ERROR] NetworkProtocol: no state of %s\n", protocol.name);
            continue;
        }
        boost::json::object settings{{"ProtocolEnabled", state.enabled != 0}, {"Port", state.port}};
        if (protocol.service == NET_SERVICE_HTTPS)
            settings["Certificates"] = link(https_certificates_uri);
        if (protocol.service == NET_SERVICE_NTP) settings["NTPServers"] = ntp_servers();
        set(protocol.name, std::move(settings));
    }
    return 0;
}

}  // namespace odata::redfish
