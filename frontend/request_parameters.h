// The CGI parameters of the current request that are read on every
// request. Within a request of the service loop each is looked up in the
// environment once and kept; outside the loop, on every read.
#pragma once

#include <optional>
#include <string_view>

namespace odata::redfish {

enum class cgi_parameter {
    request_uri,
    query_string,
    request_method,
    remote_addr,
    auth_token,     // X-Auth-Token
    authorization,  // Authorization
    origin,         // Origin
    odata_version,  // OData-Version
    if_match,
    none_match,  // None-Match
    if_none_match,
    count
};

// Called by the service loop as each request begins and ends.
void keep_request_parameters(bool within_request);

// The value of a parameter; none when the request has no such parameter.
std::optional<std::string_view> request_parameter(cgi_parameter parameter);

}  // namespace odata::redfish
