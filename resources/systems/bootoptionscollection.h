// The boot options the BIOS reported, /redfish/v1/Systems/1/BootOptions.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class bootoptionscollection : public redfish {
public:
    explicit bootoptionscollection(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
