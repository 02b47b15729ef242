// One simple storage controller of the host and its drives,
// /redfish/v1/Systems/1/SimpleStorage/<n>.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class simplestorage : public redfish {
public:
    explicit simplestorage(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
