// The BIOS configuration file under /restapi/twri: BiosFile.Download
// answers the writable setup attributes the BIOS runs with; BiosFile.Upload
// hands such a file's values to the BIOS for its next start, all of them or
// none.
#pragma once

#include "framework/webservice.h"

namespace odata::redfish {

class biosfile_download : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

// A multipart form with the part "BiosFile".
class biosfile_upload : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

}  // namespace odata::redfish
