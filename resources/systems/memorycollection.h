// The host's memory modules, /redfish/v1/Systems/1/Memory.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class memorycollection : public redfish {
public:
    explicit memorycollection(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
