// Power of the chassis: the system's power figures, the voltage sensors,
// the power supplies with their redundancy, and the battery.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class power : public redfish {
public:
    explicit power(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
