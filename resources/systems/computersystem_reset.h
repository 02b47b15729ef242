// The ComputerSystem.Reset action: answers through the system resource.
#pragma once

#include <memory>

#include "framework/webservice.h"
#include "resources/systems/system.h"

namespace odata::redfish {

class computersystem_reset : public webservice {
public:
    explicit computersystem_reset(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<system> system_;
};

}  // namespace odata::redfish
