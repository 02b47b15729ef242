// The Managers collection: the BMC is the only manager.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class managercollection : public redfish {
public:
    explicit managercollection(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
