#include "resources/managers/host_interfaces.h"

#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "platform/libipmi_sensors.h"
#include "platform/libipmi_users.h"
#include "resources/managers/manager_uris.h"

namespace odata::redfish {
namespace {

const std::string interface_uri = std::string(manager_host_interfaces_uri) + "/1";
const std::string host_ethernet_uri = interface_uri + "/HostEthernetInterfaces";

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
    set("Status",
        enabled ? status_object(SENSOR_HEALTH_OK) : boost::json::object{{"State", "Disabled"}});
    set("InterfaceEnabled", enabled);
    set("ExternallyAccessible", false);
    set("AuthenticationModes", boost::json::array{"BasicAuth", "RedfishSessionAuth"});
    set("HostEthernetInterfaces", link(host_ethernet_uri));
    set("Links", boost::json::object{
                     {"ComputerSystems", boost::json::array{link("/redfish/v1/Systems/1")}}});
    return 0;
}

managers_hostinterfaces_hostethernetinterfacecollection::
    managers_hostinterfaces_hostethernetinterfacecollection(request_context& context)
    : redfish(context, "EthernetInterfaceCollection", "", "Host Ethernet Interface Collection",
              host_ethernet_uri) {}

// The simulated host reaches the BMC without a network interface of its own.
int managers_hostinterfaces_hostethernetinterfacecollection::get(request_context&) {
    set_common_properties();
    set_members({});
    return 0;
}

}  // namespace odata::redfish
