// The user name and password of an HTTP Basic Authorization header.
#pragma once

#include <optional>
#include <string>

namespace odata::redfish {

struct basic_credentials {
    std::string user_name;
    std::string password;
};

// Decodes "Basic <base64 of name:password>"; none when the header is not
// of that form or not valid base64.
std::optional<basic_credentials> decode_basic_authorization(const std::string& header);

}  // namespace odata::redfish
