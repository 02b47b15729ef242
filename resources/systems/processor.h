// One processor socket of the host, /redfish/v1/Systems/1/Processors/<n>.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class processor : public redfish {
public:
    explicit processor(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
