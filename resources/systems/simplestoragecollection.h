// The host's simple storage controllers, /redfish/v1/Systems/1/SimpleStorage.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class simplestoragecollection : public redfish {
public:
    explicit simplestoragecollection(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
