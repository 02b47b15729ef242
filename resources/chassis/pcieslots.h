// The board's PCIe slots and what sits in them, /redfish/v1/Chassis/1/PCIeSlots.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class pcieslots : public redfish {
public:
    explicit pcieslots(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
