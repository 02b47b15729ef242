// The parameters of an OEM firmware inventory member's
// TwrFirmwareInventory.Update: none (it flashes the uploaded image).
#pragma once

#include "framework/common_actioninfo.h"

namespace odata::redfish {

class updateactioninfo : public common_actioninfo {
public:
    explicit updateactioninfo(request_context& context);
    int get(request_context& context) override;

protected:
    const actioninfo_parameters* parameters() const override;
};

}  // namespace odata::redfish
