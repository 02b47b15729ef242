// One boot option of the BIOS, /redfish/v1/Systems/1/BootOptions/Boot<hex>.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class bootoptions : public redfish {
public:
    explicit bootoptions(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
