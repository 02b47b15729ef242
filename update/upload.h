// The HTTP push URI: a multipart form with the update parameters and the
// image, staged by target and flashed in a task (or, for a BIOS image,
// at the next host reset).
#pragma once

#include "framework/webservice.h"

namespace odata::redfish {

class upload : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

}  // namespace odata::redfish
