// One sensor /redfish/v1/Chassis/1/Sensors/<n>: the n-th exposed SDR
// record, counted from 1.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class sensor : public redfish {
public:
    explicit sensor(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
