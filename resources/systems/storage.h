// The host's storage subsystems, /redfish/v1/Systems/1/Storage: the onboard
// SATA controller, member "SATAEmbedded", and the drives in its bays.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class storagecollection : public redfish {
public:
    explicit storagecollection(request_context& context);
    int get(request_context& context) override;
};

class storage : public redfish {
public:
    explicit storage(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
