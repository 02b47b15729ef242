// The privilege limit of the host's KCS channel.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class kcsinterface : public redfish {
public:
    explicit kcsinterface(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

}  // namespace odata::redfish
