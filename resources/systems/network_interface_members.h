// The system's view of a network adapter's functions and ports,
// /redfish/v1/Systems/1/NetworkInterfaces/<n>/NetworkDeviceFunctions and
// .../NetworkPorts: their members are the adapter's, under the chassis.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

// A collection of the adapter's members under segment ("/NetworkPorts").
class adapter_member_collection : public redfish {
public:
    int get(request_context& context) override;

protected:
    adapter_member_collection(request_context& context, const char* entity_type, const char* name,
                              const char* segment);

private:
    const char* segment_;
};

class sysnetworkdevicefunctcollection : public adapter_member_collection {
public:
    explicit sysnetworkdevicefunctcollection(request_context& context);
};

class sysnetworkportscollection : public adapter_member_collection {
public:
    explicit sysnetworkportscollection(request_context& context);
};

}  // namespace odata::redfish
