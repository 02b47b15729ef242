// The parameters of a SimpleUpdate, checked in the order the action answers
// them, each failure a message of its own.
#pragma once

#include <boost/json.hpp>
#include <string>

#include "frontend/message.h"

namespace odata::redfish {

struct simple_update_request {
    std::string protocol;  // "HTTP", "HTTPS" or "FTP"
    std::string host;      // host[:port], perhaps with a user part
    std::string path;      // from the first "/"
    int device = 0;        // FW_DEVICE_BMC or FW_DEVICE_BIOS
    std::string username;  // "" when none
    std::string password;

    // "http://host/path" with the scheme of the protocol.
    std::string url() const;
};

// Reads the request body into request; every failure adds one
// OemSimpleupdateErrorMessage to result, in the order of the checks.
void read_simple_update(const boost::json::object& body, simple_update_request& request,
                        result_record& result);

// The result that SimpleUpdate failures are gathered in.
result_record simple_update_errors();

}  // namespace odata::redfish
