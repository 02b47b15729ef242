// The firmware inventory: a collection of the components and one resource
// per component.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class firmwareinventorycollection : public redfish {
public:
    explicit firmwareinventorycollection(request_context& context);
    int get(request_context& context) override;
};

class firmwareinventory : public redfish {
public:
    explicit firmwareinventory(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
