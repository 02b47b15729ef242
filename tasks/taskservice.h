// The TaskService: whether tasks may be created, and the clock of the task
// records.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class taskservice : public redfish {
public:
    explicit taskservice(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

}  // namespace odata::redfish
