// The system lockdown switch: while it is on, changes of firmware and of
// the BMC's configuration are refused (route_refused_in_lockdown); this
// resource itself stays writable, so that lockdown can be turned off.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class syslockdown : public redfish {
public:
    explicit syslockdown(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

}  // namespace odata::redfish
