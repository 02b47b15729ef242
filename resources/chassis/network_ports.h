// The functions and ports of a host network adapter, one function per port:
// /redfish/v1/Chassis/1/NetworkAdapters/<n>/NetworkDeviceFunctions[/<p>]
// and .../NetworkPorts[/<p>].
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class networkdevicefunctcollection : public redfish {
public:
    explicit networkdevicefunctcollection(request_context& context);
    int get(request_context& context) override;
};

class networkdevicefunction : public redfish {
public:
    explicit networkdevicefunction(request_context& context);
    int get(request_context& context) override;
};

class networkportscollection : public redfish {
public:
    explicit networkportscollection(request_context& context);
    int get(request_context& context) override;
};

class networkport : public redfish {
public:
    explicit networkport(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
