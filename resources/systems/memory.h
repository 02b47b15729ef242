// One memory module of the host, /redfish/v1/Systems/1/Memory/<n>.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class memory : public redfish {
public:
    explicit memory(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
