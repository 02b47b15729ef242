// The firmware inventories: a collection of the components and one resource
// per component, under the standard path and under the OEM one (which
// lists the BMC, the BIOS and the RAID controllers, with the actions that
// update them).
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class firmwareinventorycollection : public redfish {
public:
    explicit firmwareinventorycollection(request_context& context);
    int get(request_context& context) override;

protected:
    firmwareinventorycollection(request_context& context, std::string name, std::string uri,
                                bool oem);

private:
    bool oem_;
};

class firmwareinventory : public redfish {
public:
    explicit firmwareinventory(request_context& context);
    int get(request_context& context) override;

protected:
    firmwareinventory(request_context& context, std::string uri, bool oem);

private:
    bool oem_;
};

class twrfirmwareinventorycollection : public firmwareinventorycollection {
public:
    explicit twrfirmwareinventorycollection(request_context& context);
};

class twrfirmwareinventory : public firmwareinventory {
public:
    explicit twrfirmwareinventory(request_context& context);
};

}  // namespace odata::redfish
