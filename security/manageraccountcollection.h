// The local accounts: GET lists them, POST creates one.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class manageraccountcollection : public redfish {
public:
    explicit manageraccountcollection(request_context& context);
    int get(request_context& context) override;
    int post(request_context& context) override;
};

}  // namespace odata::redfish
