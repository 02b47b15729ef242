// One network port of the host, /redfish/v1/Systems/1/EthernetInterfaces/<n>.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class ethernetinterface : public redfish {
public:
    explicit ethernetinterface(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
