// The Manager.Reset action: restarts the BMC and answers through the
// manager resource.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "framework/webservice.h"
#include "resources/managers/manager.h"

namespace odata::redfish {

// The ResetType values the action takes; its ActionInfo lists them.
const std::vector<std::string_view>& manager_reset_type_names();

class manager_reset : public webservice {
public:
    explicit manager_reset(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<manager> manager_;
};

}  // namespace odata::redfish
