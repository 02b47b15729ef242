// The firmware components that the inventories list: the running firmware
// of each device (the RAID controllers' once per controller found) and the
// images in the platform's staging inventory.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace odata::redfish {

struct firmware_component {
    std::string id;  // "BMC", "CPLD_Motherboard", "Broadcom0", "Staging_BMC", ...
    std::string version;
    bool updateable;
    int device;  // FW_DEVICE_*
    // Its member of the OEM inventory ("BMC", "HARAIDController.0"); ""
    // when it has none.
    std::string oem_id;
};

std::vector<firmware_component> firmware_components();
std::optional<firmware_component> find_firmware_component(const std::string& id);
std::optional<firmware_component> find_oem_firmware_component(const std::string& oem_id);

// Records a staged image's version under its staging inventory entry.
bool store_staged_version(const std::string& id, const std::string& version);

}  // namespace odata::redfish
