// The Systems collection: the one host this BMC manages.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class systemcollection : public redfish {
public:
    explicit systemcollection(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
