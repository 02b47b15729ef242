// UpdateService.StartUpdate: flashes the image that an HTTP push left
// waiting ("OnStartUpdateRequest") in its task.
#pragma once

#include "framework/webservice.h"

namespace odata::redfish {

class updateservice_startupdate : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

}  // namespace odata::redfish
