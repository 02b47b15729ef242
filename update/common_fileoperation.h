// The BMC's configuration as one file, /restapi/twri/Actions/File.Export
// and File.Import: exported without secrets, imported whole or not at all.
#pragma once

#include "framework/webservice.h"

namespace odata::redfish {

class common_fileoperation : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;

private:
    void export_file(request_context& context);
    void import_file(request_context& context);
};

}  // namespace odata::redfish
