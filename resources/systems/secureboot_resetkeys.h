// SecureBoot.ResetKeys: the UEFI Secure Boot key databases reset to their
// defaults or emptied; answers through the SecureBoot resource. And the
// action's ActionInfo.
#pragma once

#include <memory>

#include "framework/common_actioninfo.h"
#include "framework/webservice.h"
#include "resources/systems/secureboot.h"

namespace odata::redfish {

class secureboot_resetkeys : public webservice {
public:
    explicit secureboot_resetkeys(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<secureboot> secureboot_;
};

class secureboot_resetkeysactioninfo : public common_actioninfo {
public:
    explicit secureboot_resetkeysactioninfo(request_context& context);

protected:
    const actioninfo_parameters* parameters() const override;
};

}  // namespace odata::redfish
