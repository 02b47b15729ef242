// The services at the top of the URI space, in the order of the OData
// service document; the service root links the same services.
#pragma once

#include <string_view>
#include <vector>

namespace odata::redfish {

// Where the service root links a service.
enum class root_link {
    none,      // the service root itself
    property,  // a property of its own name
    links,     // under "Links"
};

struct top_level_service {
    std::string_view name;  // "Systems"
    std::string_view url;   // "/redfish/v1/Systems"
    root_link in_root;
};

const std::vector<top_level_service>& top_level_services();

}  // namespace odata::redfish
