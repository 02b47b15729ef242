// Bios.ChangePassword: a new BIOS administrator password, which the BIOS
// takes at its next start; answers through the BIOS resource. And the
// action's ActionInfo.
#pragma once

#include <memory>

#include "framework/common_actioninfo.h"
#include "framework/webservice.h"
#include "resources/systems/bios.h"

namespace odata::redfish {

class bios_changepassword : public webservice {
public:
    explicit bios_changepassword(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<bios> bios_;
};

class changepasswordactioninfo : public common_actioninfo {
public:
    explicit changepasswordactioninfo(request_context& context);

protected:
    const actioninfo_parameters* parameters() const override;
};

}  // namespace odata::redfish
