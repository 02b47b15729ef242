#include "resources/managers/common_ethernetinterface.h"

#include <iostream>

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libipmi_sensors.h"
#include "platform/liblan.h"
#include "platform/libweb.h"
#include "resources/managers/ethernet_patch.h"
#include "resources/managers/lan_dns.h"
#include "resources/managers/manager_uris.h"

namespace odata::redfish {
namespace {

constexpr const char* port_id = "1";

St_LanConfig read_lan_config() {
    St_LanConfig config;
    if (PltLAN_GetConfig(&config) == PLT_OK) return config;
    console_log("[ERROR] EthernetInterface: LAN settings unreadable\n");
    throw_http_error(500, "Base.1.10.InternalError");
}

boost::json::array ipv4_addresses(const St_LanConfig& lan) {
    return boost::json::array({{{"Address", lan.ipv4_address},
                                {"SubnetMask", lan.subnet_mask},
                                {"Gateway", lan.gateway},
                                {"AddressOrigin", lan.dhcp_enabled ? "DHCP" : "Static"}}},
                              answer_storage());
}

// While DHCP is on the address is leased: there is no static one.
boost::json::array ipv4_static_addresses(const St_LanConfig& lan) {
    if (lan.dhcp_enabled) return boost::json::array(answer_storage());
    return boost::json::array({{{"Address", lan.ipv4_address},
                                {"SubnetMask", lan.subnet_mask},
                                {"Gateway", lan.gateway}}},
                              answer_storage());
}

}  // namespace

common_ethernetinterface::common_ethernetinterface(request_context& context)
    : redfish(context, "EthernetInterface",
              std::string(schema_file_of("EthernetInterface").version),
              "Manager Ethernet Interface",
              std::string(manager_ethernet_interfaces_uri) + "/" + port_id) {}

void common_ethernetinterface::require_member() const {
    if (context_.captures.size() != 1 || context_.captures[0] != port_id) throw_http(404);
}

int common_ethernetinterface::get(request_context&) {
    require_member();
    const St_LanConfig lan = read_lan_config();
    set_common_properties();
    set("Description", "Dedicated management network interface of the BMC");
    set("Status", status_object(SENSOR_HEALTH_OK));
    set("InterfaceEnabled", true);
    set("LinkStatus", lan.link_up ? "LinkUp" : "LinkDown");
    set("MACAddress", lan.mac_address);
    set("PermanentMACAddress", lan.mac_address);
    set("SpeedMbps", lan.speed_mbps);
    set("HostName", lan.host_name);
    set("FQDN", lan_fqdn(lan));
    set("DHCPv4", {{"DHCPEnabled", lan.dhcp_enabled != 0}});
    set("IPv4Addresses", ipv4_addresses(lan));
    set("IPv4StaticAddresses", ipv4_static_addresses(lan));
    set("NameServers", lan_name_servers(lan));
    return 0;
}

int common_ethernetinterface::patch(request_context& context) {
    require_member();
    const boost::json::value body = context.body_json();
    result_record result = general_error();
    const lan_changes changes = read_lan_changes(request_object(body), result);
    if (!result.entries.empty()) throw_http_result(400, result);
    const St_LanConfig config = changed_lan_config(read_lan_config(), changes, result);
    if (!result.entries.empty()) throw_http_result(400, result);
    if (PltLAN_SetConfig(&config) != PLT_OK) {
        console_log("[ERROR] EthernetInterface: LAN settings not applied\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
