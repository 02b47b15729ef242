#include "framework/registry_files.h"

#include <algorithm>

namespace odata::redfish {

const std::vector<registry_file>& registry_files() {
    static const std::vector<registry_file> table = {
        {"Base.v1_10_3", "Base Message Registry File", "Base Message Registry File locations"},
        {"Event.v1_0_0", "Event Message Registry File", "Event Message Registry File locations"},
        {"TWR.v1_0_0", "TWR Message Registry File", "TWR Message Registry File locations"},
        {"BiosAttributeRegistry.v1_0_0", "BIOS Attribute Registry File",
         "BIOS Attribute Registry File locations"},
    };
    return table;
}

const registry_file* find_registry_file(std::string_view id) {
    for (const auto& row : registry_files()) {
        if (row.id == id) return &row;
    }
    return nullptr;
}

std::string registry_of(std::string_view id) {
    std::string registry(id);
    const size_t dot = registry.find('.');
    if (dot != std::string::npos && dot + 1 < registry.size()) registry.erase(dot + 1, 1);
    std::replace(registry.begin(), registry.end(), '_', '.');
    return registry;
}

std::string registry_location(std::string_view id) {
    return "/registries/" + registry_of(id) + ".json";
}

}  // namespace odata::redfish
