// The host's Ethernet interfaces: one per port of its network adapters,
// numbered from 1 in the order the adapters report them.
#include <optional>

#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "platform/libipmi_sensors.h"
#include "platform/libnic.h"
#include "resources/systems/ethernetinterface.h"
#include "resources/systems/member_uri.h"
#include "resources/systems/system_uris.h"
#include "resources/systems/systems_ethernetinterfacecollection.h"

namespace odata::redfish {
namespace {

std::optional<St_HostNicPort> host_port(int number) {
    St_HostNicPort port{};
    if (number < 1 || NicGetPort(number - 1, &port) != PLT_OK) return std::nullopt;
    return port;
}

std::string port_description(const St_HostNicPort& port) {
    return "Port " + std::to_string(port.port) + " of network adapter " +
           std::to_string(port.adapter);
}

}  // namespace

systems_ethernetinterfacecollection::systems_ethernetinterfacecollection(request_context& context)
    : redfish(context, "EthernetInterfaceCollection", "", "Ethernet Network Interface Collection",
              host_ethernet_interfaces_uri) {}

int systems_ethernetinterfacecollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> uris;
    for (int number = 1; host_port(number); ++number)
        uris.push_back(std::string(host_ethernet_interfaces_uri) + "/" + std::to_string(number));
    set_members(uris);
    return 0;
}

ethernetinterface::ethernetinterface(request_context& context)
    : redfish(context, "EthernetInterface",
              std::string(schema_file_of("EthernetInterface").version), "Ethernet Interface",
              member_uri(host_ethernet_interfaces_uri, context)) {}

int ethernetinterface::get(request_context& context) {
    const std::optional<St_HostNicPort> port = host_port(member_number(context));
    if (!port) throw_member_not_found("EthernetInterface", context);
    set_common_properties();
    set("Description", port_description(*port));
    set("Status", status_object(SENSOR_HEALTH_OK));
    set("LinkStatus", port->link_up ? "LinkUp" : "LinkDown");
    set("InterfaceEnabled", true);
    set("MACAddress", port->mac_address);
    set("PermanentMACAddress", port->mac_address);
    set("SpeedMbps", port->speed_mbps);
    set("FullDuplex", true);
    // The host's operating system configures its ports; the BMC does not
    // see their names or addresses.
    set("HostName", boost::json::value(nullptr));
    set("FQDN", boost::json::value(nullptr));
    set("IPv4Addresses", boost::json::array());
    set("NameServers", boost::json::array());
    set("VLANs", link(uri() + "/VLANs"));
    return 0;
}

}  // namespace odata::redfish
