#include "resources/managers/managers_ethernetinterfacecollection.h"

#include "resources/managers/manager_uris.h"

namespace odata::redfish {

managers_ethernetinterfacecollection::managers_ethernetinterfacecollection(request_context& context)
    : redfish(context, "EthernetInterfaceCollection", "", "Ethernet Network Interface Collection",
              manager_ethernet_interfaces_uri) {}

int managers_ethernetinterfacecollection::get(request_context&) {
    set_common_properties();
    set_members({std::string(manager_ethernet_interfaces_uri) + "/1"});
    return 0;
}

}  // namespace odata::redfish
