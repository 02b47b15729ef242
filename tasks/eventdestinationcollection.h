// The subscriptions: every enabled alert-destination entry; POST creates
// one in the first free entry.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class eventdestinationcollection : public redfish {
public:
    explicit eventdestinationcollection(request_context& context);
    int get(request_context& context) override;
    int post(request_context& context) override;
};

}  // namespace odata::redfish
