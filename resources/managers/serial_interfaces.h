// The BMC's serial console ports: the collection and one port.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class serialInterfacecollection : public redfish {
public:
    explicit serialInterfacecollection(request_context& context);
    int get(request_context& context) override;
};

class serialInterface : public redfish {
public:
    explicit serialInterface(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
