// The Tasks collection: every task of the store, by id.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class taskcollection : public redfish {
public:
    explicit taskcollection(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
