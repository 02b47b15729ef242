// A network adapter's ports as the adapter's management controller reports
// them, and the Ethernet function that serves each.
#include "resources/chassis/network_ports.h"
#include "frontend/answer_storage.h"

#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/exception_http.h"
#include "platform/libipmi_sensors.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/chassis/host_adapters.h"
#include "resources/chassis/pcie_inventory.h"
#include "resources/systems/member_uri.h"

namespace odata::redfish {
namespace {

constexpr const char* functions_segment = "/NetworkDeviceFunctions";
constexpr const char* ports_segment = "/NetworkPorts";

// The adapter's URI as the route names it, with its number normalised.
std::string adapter_uri(const request_context& context) {
    return member_uri(network_adapters_uri, context);
}

std::string port_uri(const request_context& context, const char* segment) {
    const int number = context.capture_number(1);
    return adapter_uri(context) + segment + "/" +
           (number < 0 ? context.captures[1] : std::to_string(number));
}

std::vector<St_HostNicPort> existing_adapter_ports(const request_context& context) {
    const int number = context.capture_number(0);
    if (!host_adapter(number))
        throw_http_error(404, "Base.1.10.ResourceNotFound",
                         {"NetworkAdapter", adapter_uri(context)});
    return adapter_ports(number);
}

St_HostNicPort existing_port(const request_context& context, const char* type,
                             const std::string& uri) {
    const std::vector<St_HostNicPort> ports = existing_adapter_ports(context);
    const int number = context.capture_number(1);
    for (const St_HostNicPort& port : ports)
        if (port.port == number) return port;
    throw_http_error(404, "Base.1.10.ResourceNotFound", {type, uri});
}

std::vector<std::string> port_member_uris(const request_context& context, const char* segment) {
    std::vector<std::string> uris;
    for (const St_HostNicPort& port : existing_adapter_ports(context))
        uris.push_back(adapter_uri(context) + segment + "/" + std::to_string(port.port));
    return uris;
}

}  // namespace

networkdevicefunctcollection::networkdevicefunctcollection(request_context& context)
    : redfish(context, "NetworkDeviceFunctionCollection", "", "Network Device Function Collection",
              adapter_uri(context) + functions_segment) {}

int networkdevicefunctcollection::get(request_context& context) {
    const std::vector<std::string> uris = port_member_uris(context, functions_segment);
    set_common_properties();
    set_members(uris);
    return 0;
}

networkdevicefunction::networkdevicefunction(request_context& context)
    : redfish(context, "NetworkDeviceFunction",
              std::string(schema_file_of("NetworkDeviceFunction").version),
              "Network Device Function", port_uri(context, functions_segment)) {}

int networkdevicefunction::get(request_context& context) {
    const St_HostNicPort port = existing_port(context, "NetworkDeviceFunction", uri_);
    const std::string port_uri =
        adapter_uri(context) + ports_segment + "/" + std::to_string(port.port);
    set_common_properties();
    set("NetDevFuncType", "Ethernet");
    set("NetDevFuncCapabilities", {"Ethernet"});
    set("Ethernet", {{"MACAddress", port.mac_address}, {"PermanentMACAddress", port.mac_address}});
    set("AssignablePhysicalPorts", {link(port_uri)});
    set("Links",
        {{"PCIeFunction", link(pcie_function_uri(PCIE_KIND_NIC, port.adapter, port.port - 1))},
         {"PhysicalPortAssignment", link(port_uri)}});
    set("Status", status_object(SENSOR_HEALTH_OK));
    return 0;
}

networkportscollection::networkportscollection(request_context& context)
    : redfish(context, "NetworkPortCollection", "", "Network Port Collection",
              adapter_uri(context) + ports_segment) {}

int networkportscollection::get(request_context& context) {
    const std::vector<std::string> uris = port_member_uris(context, ports_segment);
    set_common_properties();
    set_members(uris);
    return 0;
}

networkport::networkport(request_context& context)
    : redfish(context, "NetworkPort", std::string(schema_file_of("NetworkPort").version),
              "Network Port", port_uri(context, ports_segment)) {}

int networkport::get(request_context& context) {
    const St_HostNicPort port = existing_port(context, "NetworkPort", uri_);
    set_common_properties();
    set("PhysicalPortNumber", std::to_string(port.port));
    set("LinkStatus", port.link_up ? "Up" : "Down");
    set("ActiveLinkTechnology", "Ethernet");
    set("CurrentLinkSpeedMbps", port.speed_mbps);
    set("SupportedLinkCapabilities",
        boost::json::array({{{"LinkNetworkTechnology", "Ethernet"},
                             {"CapableLinkSpeedMbps", {port.max_speed_mbps}}}},
                           answer_storage()));
    set("AssociatedNetworkAddresses", {port.mac_address});
    set("Status", status_object(SENSOR_HEALTH_OK));
    return 0;
}

}  // namespace odata::redfish
