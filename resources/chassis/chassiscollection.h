// The Chassis collection: the server's enclosure and its storage enclosures.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class chassiscollection : public redfish {
public:
    explicit chassiscollection(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
