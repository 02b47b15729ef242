// UEFI Secure Boot of the host, /redfish/v1/Systems/1/SecureBoot: the
// BIOS's "SecureBoot" setup attribute, changed for the next boot.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class secureboot : public redfish {
public:
    explicit secureboot(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

}  // namespace odata::redfish
