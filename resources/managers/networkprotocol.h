// The network services of the BMC, /redfish/v1/Managers/1/NetworkProtocol:
// their switches and ports, and the host name, which a client may change.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class networkprotocol : public redfish {
public:
    explicit networkprotocol(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

}  // namespace odata::redfish
