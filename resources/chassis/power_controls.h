// The chassis's controls, /redfish/v1/Chassis/1/Controls: its one control
// is the power limit, the same limit that Power's PowerControl shows, read
// from the same platform record so that both views always agree.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class controlcollection : public redfish {
public:
    explicit controlcollection(request_context& context);
    int get(request_context& context) override;
};

class powerlimitcontrol : public redfish {
public:
    explicit powerlimitcontrol(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
