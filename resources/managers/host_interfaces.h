// The Redfish host interface through which the host reaches the BMC: the
// collection, the interface, and the network interface the host sees on its
// side (a USB NIC), alone in its collection.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class managers_hostinterfacecollection : public redfish {
public:
    explicit managers_hostinterfacecollection(request_context& context);
    int get(request_context& context) override;
};

class hostinterface : public redfish {
public:
    explicit hostinterface(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

class managers_hostinterfaces_hostethernetinterfacecollection : public redfish {
public:
    explicit managers_hostinterfaces_hostethernetinterfacecollection(request_context& context);
    int get(request_context& context) override;
};

class hostethernetinterface : public redfish {
public:
    explicit hostethernetinterface(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
