// The BMC's IPMI-level configuration as the update service's Oem
// IPMIConfig resource: downloaded as one file, restored from one.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class ipmiconfig : public redfish {
public:
    explicit ipmiconfig(request_context& context);
    int get(request_context& context) override;
};

// Answers the configuration file as an attachment.
class ipmiconfig_download : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

// A multipart form with the part "ConfigFile", a file that the download
// gave.
class ipmiconfig_upload : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

}  // namespace odata::redfish
