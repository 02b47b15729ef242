// The manager's clock source: NTP with up to three servers, or the clock
// as set by hand.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class ntp : public redfish {
public:
    explicit ntp(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

}  // namespace odata::redfish
