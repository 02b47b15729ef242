// A network adapter as a PCIe device, /redfish/v1/Chassis/1/PCIeDevices/NIC<n>.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class nic : public redfish {
public:
    explicit nic(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
