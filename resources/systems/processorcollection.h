// The host's processors, /redfish/v1/Systems/1/Processors.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class processorcollection : public redfish {
public:
    explicit processorcollection(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
