// The parameters that UpdateService.SimpleUpdate takes.
#pragma once

#include "framework/common_actioninfo.h"

namespace odata::redfish {

class simpleupdateactioninfo : public common_actioninfo {
public:
    explicit simpleupdateactioninfo(request_context& context);

protected:
    const actioninfo_parameters* parameters() const override;
};

}  // namespace odata::redfish
