// The BMC's configuration as one file, /restapi/twri/Actions/File.Export
// and File.Import: exported without secrets, imported whole or not at all.
#pragma once

#include <boost/json.hpp>
#include <string>

#include "framework/webservice.h"

namespace odata::redfish {

// The IPMI configuration of an exported file, as the restore takes it;
// empty, with the reason for the user, when the file is not one of this
// version with that member alone.
std::string ipmi_section(const boost::json::value& file, std::string& reason);

class common_fileoperation : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;

private:
    void export_file(request_context& context);
    void import_file(request_context& context);
};

}  // namespace odata::redfish
