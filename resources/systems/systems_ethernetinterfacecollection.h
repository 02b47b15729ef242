// The host's network ports, /redfish/v1/Systems/1/EthernetInterfaces.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class systems_ethernetinterfacecollection : public redfish {
public:
    explicit systems_ethernetinterfacecollection(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
