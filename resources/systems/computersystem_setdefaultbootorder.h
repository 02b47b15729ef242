// The ComputerSystem.SetDefaultBootOrder action: hands the BIOS its boot
// options in their default order for the next boot. Answers through the
// system resource.
#pragma once

#include <memory>

#include "framework/webservice.h"
#include "resources/systems/system.h"

namespace odata::redfish {

class computersystem_setdefaultbootorder : public webservice {
public:
    explicit computersystem_setdefaultbootorder(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<system> system_;
};

}  // namespace odata::redfish
