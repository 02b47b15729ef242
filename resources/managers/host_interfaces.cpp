#include "resources/managers/host_interfaces.h"

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libipmi_sensors.h"
#include "platform/libipmi_users.h"
#include "resources/managers/manager_uris.h"

namespace odata::redfish {
namespace {

const std::string interface_uri = std::string(manager_host_interfaces_uri) + "/1";
const std::string host_ethernet_uri = interface_uri + "/HostEthernetInterfaces";
// The host sees one network interface on its side.
const std::string host_nic_uri = host_ethernet_uri + "/1";

struct interface_changes {
    std::optional<bool> enabled;
};

void read_enabled(const request_member& member, interface_changes& changes, result_record& result) {
    changes.enabled = require_boolean(member.value, member.path, result);
}

constexpr patch_property<interface_changes> interface_properties[] = {
    {"InterfaceEnabled", read_enabled},
};

}  // namespace

managers_hostinterfacecollection::managers_hostinterfacecollection(request_context& context)
    : redfish(context, "HostInterfaceCollection", "", "Host Interface Collection",
              manager_host_interfaces_uri) {}

int managers_hostinterfacecollection::get(request_context&) {
    set_common_properties();
    set_members({interface_uri});
    return 0;
}

hostinterface::hostinterface(request_context& context)
    : redfish(context, "HostInterface", std::string(schema_file_of("HostInterface").version),
              "Host Interface", interface_uri) {}

int hostinterface::get(request_context&) {
    const bool enabled = UtilGetHostInterfaceEnable() != 0;
    set_common_properties();
    set("Description", "Redfish host interface of the BMC");
    set("HostInterfaceType", "NetworkHostInterface");
    set("Status", enabled ? status_object(SENSOR_HEALTH_OK)
                          : boost::json::object({{"State", "Disabled"}}, answer_storage()));
    set("InterfaceEnabled", enabled);
    set("ExternallyAccessible", false);
    set("AuthenticationModes", {"BasicAuth", "RedfishSessionAuth"});
    set("HostEthernetInterfaces", link(host_ethernet_uri));
    set("Links", {{"ComputerSystems", link_array("/redfish/v1/Systems/1")}});
    return 0;
}

int hostinterface::patch(request_context& context) {
    const interface_changes changes = read_patch_body(interface_properties, context.body_json());
    if (UtilSetHostInterface(*changes.enabled ? 1 : 0) != PLT_OK)
        throw_http_error(500, "Base.1.10.InternalError");
    write_status_line(204);
    return 0;
}

managers_hostinterfaces_hostethernetinterfacecollection::
    managers_hostinterfaces_hostethernetinterfacecollection(request_context& context)
    : redfish(context, "EthernetInterfaceCollection", "", "Host Ethernet Interface Collection",
              host_ethernet_uri) {}

int managers_hostinterfaces_hostethernetinterfacecollection::get(request_context&) {
    set_common_properties();
    set_members({host_nic_uri});
    return 0;
}

hostethernetinterface::hostethernetinterface(request_context& context)
    : redfish(context, "EthernetInterface",
              std::string(schema_file_of("EthernetInterface").version), "Host Ethernet Interface",
              host_ethernet_uri + "/" + context.captures.at(0)) {}

int hostethernetinterface::get(request_context& context) {
    St_HostIfHostNic nic{};
    if (uri() != host_nic_uri)
        throw_http_error(404, "Base.1.10.ResourceNotFound",
                         {"EthernetInterface", context.captures.at(0)});
    if (UtilGetHostInterfaceHostNic(&nic) != PLT_OK)
        throw_http_error(500, "Base.1.10.InternalError");
    const bool enabled = UtilGetHostInterfaceEnable() != 0;
    boost::json::object status = status_object(SENSOR_HEALTH_OK);
    if (!enabled) status["State"] = "Disabled";
    // The host takes the address from these settings, not from a DHCP
    // server; the link reaches the BMC only, so it has no gateway, names or
    // name servers, and a USB link has no Ethernet speed.
    const boost::json::array addresses({{{"Address", nic.ipv4_address},
                                         {"SubnetMask", nic.subnet_mask},
                                         {"AddressOrigin", "Static"},
                                         {"Gateway", nullptr}}},
                                       answer_storage());
    set_common_properties();
    set("Description", "The host's side of the Redfish host interface");
    set("Status", std::move(status));
    set("InterfaceEnabled", enabled);
    set("LinkStatus", enabled ? "LinkUp" : "LinkDown");
    set("MACAddress", nic.mac_address);
    set("PermanentMACAddress", nic.mac_address);
    set("SpeedMbps", boost::json::value(nullptr));
    set("HostName", boost::json::value(nullptr));
    set("FQDN", boost::json::value(nullptr));
    set("DHCPv4", {{"DHCPEnabled", false}});
    set("IPv4Addresses", addresses);
    set("IPv4StaticAddresses", addresses);
    set("NameServers", boost::json::array());
    return 0;
}

}  // namespace odata::redfish
