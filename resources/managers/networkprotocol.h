// The network services of the BMC, /redfish/v1/Managers/1/NetworkProtocol.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class networkprotocol : public redfish {
public:
    explicit networkprotocol(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
