// The UpdateService: the firmware inventories and the update actions.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class updateservice : public redfish {
public:
    explicit updateservice(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
