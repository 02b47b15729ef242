// Thermal of the chassis: the temperature sensors and the fans.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class thermal : public redfish {
public:
    explicit thermal(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
