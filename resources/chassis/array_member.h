// Members of the arrays of Power and Thermal: not resources of their own,
// they are named by a fragment of their parent's URI.
#pragma once

#include <boost/json.hpp>
#include <string>
#include <string_view>

namespace odata::redfish {

// "<resource_uri>#/<array>/<index>"
std::string array_member_uri(std::string_view resource_uri, std::string_view array, size_t index);

// {"@odata.id", "@odata.type" (of the schema's published version),
// "MemberId"}: the member's first properties.
boost::json::object array_member(std::string_view resource_uri, std::string_view array,
                                 size_t index, std::string_view schema, std::string_view type);

}  // namespace odata::redfish
