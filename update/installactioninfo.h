// The parameters that the OEM TwrUpdateService.Install takes.
#pragma once

#include "framework/common_actioninfo.h"

namespace odata::redfish {

class installactioninfo : public common_actioninfo {
public:
    explicit installactioninfo(request_context& context);

protected:
    const actioninfo_parameters* parameters() const override;
};

}  // namespace odata::redfish
