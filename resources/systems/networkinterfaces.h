// One network interface of the host, /redfish/v1/Systems/1/NetworkInterfaces/<n>: the system's view
// of a network adapter.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class networkinterfaces : public redfish {
public:
    explicit networkinterfaces(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
