// The server's enclosure /redfish/v1/Chassis/1: inventory, power and
// identify light, intrusion sensor, and links to its power, thermal and
// sensor resources.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class chassis : public redfish {
public:
    explicit chassis(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

}  // namespace odata::redfish
