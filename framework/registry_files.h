// The message and attribute registries the service publishes, by the Id of
// their registry file resource. The files are static content under
// /registries, named after the registry they hold.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace odata::redfish {

struct registry_file {
    std::string_view id;  // "Base.v1_10_3"
    std::string_view name;
    std::string_view description;
};

// In the order the registry collection lists them.
const std::vector<registry_file>& registry_files();

// The row of an Id, or null.
const registry_file* find_registry_file(std::string_view id);

// The registry an Id names: the character after the first "." is dropped
// and every "_" becomes ".", so "Base.v1_10_3" gives "Base.1.10.3".
std::string registry_of(std::string_view id);

// "/registries/Base.1.10.3.json".
std::string registry_location(std::string_view id);

}  // namespace odata::redfish
