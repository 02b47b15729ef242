// The service root at /redfish/v1: the service's identity and a link to
// every top-level service.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class service_root : public redfish {
public:
    explicit service_root(request_context& context);
    int get(request_context& context) override;

private:
    void set_service_links();
};

}  // namespace odata::redfish
