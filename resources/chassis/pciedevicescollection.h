// The host's PCIe devices, /redfish/v1/Chassis/1/PCIeDevices.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class pciedevicescollection : public redfish {
public:
    explicit pciedevicescollection(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
