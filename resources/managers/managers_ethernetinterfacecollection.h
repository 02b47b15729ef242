// The BMC's network interfaces: its one dedicated LAN port.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class managers_ethernetinterfacecollection : public redfish {
public:
    explicit managers_ethernetinterfacecollection(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
