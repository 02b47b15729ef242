// The BMC's LAN port, /redfish/v1/Managers/1/EthernetInterfaces/1: its
// link and its IPv4 settings, which a client may change.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class common_ethernetinterface : public redfish {
public:
    explicit common_ethernetinterface(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;

private:
    // 404 for any member but the one port.
    void require_member() const;
};

}  // namespace odata::redfish
