// The host's network interfaces, /redfish/v1/Systems/1/NetworkInterfaces.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class networkinterfacecollection : public redfish {
public:
    explicit networkinterfacecollection(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
