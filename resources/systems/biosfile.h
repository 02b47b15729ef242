// The BIOS configuration file under /restapi/twri: BiosFile.Download
// answers the writable setup attributes the BIOS runs with; BiosFile.Upload
// hands such a file's values to the BIOS for its next start, all of them or
// none.
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string_view>

#include "framework/webservice.h"
#include "frontend/message.h"

namespace odata::redfish {

// The changes a BIOS configuration file asks for. None, with messages in
// result (TWR.1.0.OemFileoperationErrorMessage first, then one per refused
// attribute), when it is no object of "Attributes" alone or any attribute
// is refused.
std::optional<boost::json::object> bios_file_changes(std::string_view file, result_record& result);

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
