// The AccountService: lockout policy, password limits and the external
// account providers.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class accountservice : public redfish {
public:
    explicit accountservice(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

}  // namespace odata::redfish
