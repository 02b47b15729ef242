// The host's network adapters, /redfish/v1/Chassis/1/NetworkAdapters.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class networkadaptercollection : public redfish {
public:
    explicit networkadaptercollection(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
