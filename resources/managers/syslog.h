// The manager's remote syslog: where the BMC sends each new event-log
// line, over UDP.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class syslog : public redfish {
public:
    explicit syslog(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

}  // namespace odata::redfish
