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

// A component as the inventories name it, before its version is read: a
// lookup reads the version of the one it finds only.
struct named_component {
    std::string id;
    std::string oem_id;
    int device;
    const char* staged_entry;  // null for running firmware
};

// Calls visit with each component in inventory order, until it returns
// true: a lookup of running firmware asks nothing of the controllers or
// the staging area.
template <typename Visit>
void for_each_named(Visit visit) {
    for (const running_component& each : running_components)
        if (visit(named_component{each.id, each.oem_id, each.device, nullptr})) return;
    for (const raid_family& family : raid_families) {
        const int count = family.count();
        for (int index = 0; index < count; ++index) {
            if (visit(named_component{family.id + std::to_string(index),
                                      family.oem_id + std::to_string(index), family.device,
                                      nullptr}))
                return;
        }
    }
    for (const staged_component& each : staged_components())
        if (visit(named_component{each.inventory_entry, "", each.device, each.inventory_entry}))
            return;
}

// The component with its version; none when it has no version, which is
// when it is not there.
std::optional<firmware_component> with_version(named_component&& named) {
    const bool running = named.staged_entry == nullptr;
    std::optional<std::string> version =
        running ? running_version(named.device) : staged_version(named.staged_entry);
    if (!version) return std::nullopt;
    return firmware_component{std::move(named.id), std::move(*version), running, named.device,
                              std::move(named.oem_id)};
}

}  // namespace

std::vector<firmware_component> firmware_components() {
    std::vector<firmware_component> components;
    for_each_named([&components](named_component&& named) {
        if (std::optional<firmware_component> component = with_version(std::move(named)))
            components.push_back(std::move(*component));
        return false;
    });
    return components;
}

std::optional<firmware_component> find_firmware_component(const std::string& id) {
    std::optional<firmware_component> found;
    for_each_named([&](named_component&& named) {
        if (named.id != id) return false;
        found = with_version(std::move(named));
        return true;
    });
    return found;
}

std::optional<firmware_component> find_oem_firmware_component(const std::string& oem_id) {
    std::optional<firmware_component> found;
    for_each_named([&](named_component&& named) {
        if (named.oem_id.empty() || named.oem_id != oem_id) return false;
        found = with_version(std::move(named));
        return true;
    });
    return found;
}

bool store_staged_version(const std::string& id, const std::string& version) {
    return StoreStagedFirmwareVersion(id.c_str(), version.c_str()) == 0;
}

}  // namespace odata::redfish
