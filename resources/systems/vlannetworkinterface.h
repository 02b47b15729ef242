// The VLANs of one of the host's Ethernet interfaces,
// /redfish/v1/Systems/1/EthernetInterfaces/<n>/VLANs and its members:
// clients add, change and delete them.
#pragma once

#include "framework/redfish.h"
#include "platform/libnic.h"

namespace odata::redfish {

class vlannetworkinterfacecollection : public redfish {
public:
    explicit vlannetworkinterfacecollection(request_context& context);
    int get(request_context& context) override;
    int post(request_context& context) override;
};

class vlannetworkinterface : public redfish {
public:
    explicit vlannetworkinterface(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
    int del(request_context& context) override;

private:
    // The stored VLAN; 404 when the interface or the VLAN does not exist.
    St_HostNicVlan existing_vlan() const;
};

}  // namespace odata::redfish
