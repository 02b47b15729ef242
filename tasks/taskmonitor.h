// The task monitor: the status of a task as the HTTP status of its answer.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class taskmonitor : public redfish {
public:
    explicit taskmonitor(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
