#include "update/firmware_components.h"

#include "platform/libfwupdate.h"
#include "platform/libstorage.h"
#include "update/staged_components.h"

namespace odata::redfish {
namespace {

struct running_component {
    const char* id;
    int device;
    const char* oem_id;  // "" when not in the OEM inventory
};

constexpr running_component running_components[] = {
    {"BMC", FW_DEVICE_BMC, "BMC"},
    {"BIOS", FW_DEVICE_BIOS, "BIOS"},
    {"CPLD_Motherboard", FW_DEVICE_CPLD, ""},
    {"CPLD_Backplane", FW_DEVICE_BACKPLANE_CPLD, ""},
    {"NIC0", FW_DEVICE_NIC, ""},
    {"GPU0", FW_DEVICE_GPU, ""},
    {"LCMC", FW_DEVICE_LCMC, ""},
};

struct raid_family {
    const char* id;
    const char* oem_id;
    int device;
    int (*count)();
};

const raid_family raid_families[] = {
    {"Broadcom", "HARAIDController.", FW_DEVICE_BROADCOM, GetBRCMDeviceNum},
    {"Marvell", "MRVL_HARAIDController.", FW_DEVICE_MARVELL, UtilGetMRVLCtrlNum},
};

std::optional<std::string> running_version(int device) {
    char version[64] = {};
    if (GetFirmwareVersion(device, version, sizeof version) != 0) return std::nullopt;
    return std::string(version);
}

std::optional<std::string> staged_version(const char* id) {
    char version[64] = {};
    if (GetStagedFirmwareVersion(id, version, sizeof version) != 0) return std::nullopt;
    return std::string(version);
}

void add_raid_controllers(std::vector<firmware_component>& components) {
    for (const raid_family& family : raid_families) {
        const std::optional<std::string> version = running_version(family.device);
        const int count = family.count();
        for (int index = 0; version && index < count; ++index)
            components.push_back({family.id + std::to_string(index), *version, true, family.device,
                                  family.oem_id + std::to_string(index)});
    }
}

}  // namespace

std::vector<firmware_component> firmware_components() {
    std::vector<firmware_component> components;
    for (const running_component& each : running_components)
        if (std::optional<std::string> version = running_version(each.device))
            components.push_back({each.id, *version, true, each.device, each.oem_id});
    add_raid_controllers(components);
    for (const staged_component& each : staged_components())
        if (std::optional<std::string> version = staged_version(each.inventory_entry))
            components.push_back({each.inventory_entry, *version, false, each.device, ""});
    return components;
}

std::optional<firmware_component> find_firmware_component(const std::string& id) {
    for (firmware_component& each : firmware_components())
        if (each.id == id) return each;
    return std::nullopt;
}

std::optional<firmware_component> find_oem_firmware_component(const std::string& oem_id) {
    for (firmware_component& each : firmware_components())
        if (!each.oem_id.empty() && each.oem_id == oem_id) return each;
    return std::nullopt;
}

bool store_staged_version(const std::string& id, const std::string& version) {
    return StoreStagedFirmwareVersion(id.c_str(), version.c_str()) == 0;
}

}  // namespace odata::redfish
