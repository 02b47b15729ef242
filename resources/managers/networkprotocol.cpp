#include "resources/managers/networkprotocol.h"

#include <cstdio>

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libipmi_sensors.h"
#include "platform/liblan.h"
#include "platform/libntp.h"
#include "platform/libweb.h"
#include "resources/managers/certificate_uris.h"
#include "resources/managers/lan_dns.h"
#include "resources/managers/manager_uris.h"
#include "resources/managers/networkprotocol_patch.h"
#include "resources/managers/ntp.h"

namespace odata::redfish {
namespace {

[[noreturn]] void fail(const char* what) {
    console_log("[ERROR] NetworkProtocol: %s\n", what);
    throw_http_error(500, "Base.1.10.InternalError");
}

std::array<St_NetService, NET_SERVICE_COUNT> current_services() {
    std::array<St_NetService, NET_SERVICE_COUNT> services{};
    for (int service = 0; service < NET_SERVICE_COUNT; ++service)
        if (PltNET_GetService(service, &services[service]) != PLT_OK)
            fail("service settings unreadable");
    return services;
}

void apply_host_name(const std::string& host_name) {
    St_LanConfig lan;
    if (PltLAN_GetConfig(&lan) != PLT_OK) fail("LAN settings unreadable");
    std::snprintf(lan.host_name, sizeof lan.host_name, "%s", host_name.c_str());
    if (PltLAN_SetConfig(&lan) != PLT_OK) fail("host name not stored");
}

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
    for (const network_protocol& protocol : network_protocols) {
        St_NetService state;
        if (PltNET_GetService(protocol.service, &state) != PLT_OK) {
            console_log("[ERROR] NetworkProtocol: no state of %s\n", protocol.name);
            continue;
        }
        boost::json::object settings(
            {{"ProtocolEnabled", state.enabled != 0}, {"Port", state.port}}, answer_storage());
        if (protocol.service == NET_SERVICE_HTTPS)
            settings["Certificates"] = link(https_certificates_uri);
        if (protocol.service == NET_SERVICE_NTP) settings["NTPServers"] = ntp_servers();
        set(protocol.name, std::move(settings));
    }
    return 0;
}

// The stored settings take effect when each service next starts (the web
// server's ports at the BMC's next start); the running ones keep theirs.
int networkprotocol::patch(request_context& context) {
    const boost::json::value body = context.body_json();
    result_record result = general_error();
    const network_protocol_changes changes =
        read_network_protocol_changes(request_object(body), result);
    refuse_if_reported(result);
    const std::array<St_NetService, NET_SERVICE_COUNT> current = current_services();
    const std::array<St_NetService, NET_SERVICE_COUNT> services =
        changed_services(current, changes, result);
    refuse_if_reported(result);
    for (int service = 0; service < NET_SERVICE_COUNT; ++service) {
        const service_change& change = changes.services[service];
        if ((change.enabled || change.port) &&
            PltNET_SetService(service, &services[service]) != PLT_OK)
            fail("service settings not stored");
    }
    if (changes.host_name) apply_host_name(*changes.host_name);
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
