// The entries of the BMC's SEL, /redfish/v1/Managers/1/LogServices/Log1/Entries.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class managers_logentrycollection : public redfish {
public:
    explicit managers_logentrycollection(request_context& context);
    int get(request_context& context) override;
};

class managers_logentry : public redfish {
public:
    explicit managers_logentry(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
