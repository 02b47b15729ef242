// The TwrManagerConfig.Reset action: the manager's settings back to their
// defaults, all or none; answers through the manager resource.
#pragma once

#include <memory>

#include "framework/webservice.h"
#include "resources/managers/manager.h"

namespace odata::redfish {

class managerconfig_reset : public webservice {
public:
    explicit managerconfig_reset(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<manager> manager_;
};

}  // namespace odata::redfish
