// The firmware components that the inventories list: the running BMC, BIOS
// and CPLD, and the images in the platform's staging inventory.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace odata::redfish {

struct firmware_component {
    std::string id;  // "BMC", "BIOS", "CPLD_Motherboard", "Staging_BMC", ...
    std::string version;
    bool updateable;
};

std::vector<firmware_component> firmware_components();
std::optional<firmware_component> find_firmware_component(const std::string& id);

// Records a staged image's version under its staging inventory entry.
bool store_staged_version(const std::string& id, const std::string& version);

}  // namespace odata::redfish
