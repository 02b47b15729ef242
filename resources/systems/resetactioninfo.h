// The ResetActionInfo resource. Only the system's is served; the manager's
// path answers 404 until the manager has a reset table of its own.
#pragma once

#include "framework/common_actioninfo.h"

namespace odata::redfish {

class resetactioninfo : public common_actioninfo {
public:
    explicit resetactioninfo(request_context& context);
    int get(request_context& context) override;

protected:
    const actioninfo_parameters* parameters() const override;

private:
    bool for_system_;
};

}  // namespace odata::redfish
