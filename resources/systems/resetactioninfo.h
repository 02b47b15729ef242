// The ResetActionInfo resources of the system and of the manager, each
// listing the reset types of its own action.
#pragma once

#include "framework/common_actioninfo.h"

namespace odata::redfish {

class resetactioninfo : public common_actioninfo {
public:
    explicit resetactioninfo(request_context& context);

protected:
    const actioninfo_parameters* parameters() const override;

private:
    bool for_manager_;
};

}  // namespace odata::redfish
