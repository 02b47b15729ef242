// The Sensors collection of the chassis: every exposed SDR record,
// numbered from 1.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class sensorcollection : public redfish {
public:
    explicit sensorcollection(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
