// The BMC's manager resource /redfish/v1/Managers/1.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class manager : public redfish {
public:
    explicit manager(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
