// UpdateService.SimpleUpdate: the BMC pulls an image from a server and
// flashes it in a task.
#pragma once

#include "framework/webservice.h"

namespace odata::redfish {

class updateservice_simpleupdate : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

}  // namespace odata::redfish
