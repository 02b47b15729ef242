// The parameters of EventService.SubmitTestEvent.
#pragma once

#include "framework/common_actioninfo.h"

namespace odata::redfish {

class submittesteventactioninfo : public common_actioninfo {
public:
    explicit submittesteventactioninfo(request_context& context);

protected:
    const actioninfo_parameters* parameters() const override;
};

}  // namespace odata::redfish
