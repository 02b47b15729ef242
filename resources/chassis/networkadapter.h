// One network adapter of the host, /redfish/v1/Chassis/1/NetworkAdapters/<n>.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class networkadapter : public redfish {
public:
    explicit networkadapter(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
