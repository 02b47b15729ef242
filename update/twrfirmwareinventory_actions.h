// The update-mode actions of the OEM firmware inventory's members (the BMC,
// the BIOS, the RAID controllers); see update_mode_actions.h.
#pragma once

#include "framework/webservice.h"

namespace odata::redfish {

// 202 Accepted with the task that holds update mode.
class twrfirmwareinventory_enterupdatemode : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

// A multipart form whose part UpdateFile is the image; Success.
class twrfirmwareinventory_upload : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

// 202 Accepted with the task, which flashes the uploaded image.
class twrfirmwareinventory_update : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

// Leaves update mode without flashing; Success.
class twrfirmwareinventory_cancel : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

}  // namespace odata::redfish
