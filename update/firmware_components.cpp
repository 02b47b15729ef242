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

std::vector<named_component> named_components() {
    int raid_counts[std::size(raid_families)] = {};
    std::size_t total = std::size(running_components) + staged_components().size();
    for (std::size_t at = 0; at < std::size(raid_families); ++at) {
        raid_counts[at] = raid_families[at].count();
        total += static_cast<std::size_t>(raid_counts[at]);
    }
    std::vector<named_component> named;
    named.reserve(total);
    for (const running_component& each : running_components)
        named.push_back({each.id, each.oem_id, each.device, nullptr});
    for (std::size_t at = 0; at < std::size(raid_families); ++at) {
        const raid_family& family = raid_families[at];
        for (int index = 0; index < raid_counts[at]; ++index)
            named.push_back({family.id + std::to_string(index),
                             family.oem_id + std::to_string(index), family.device, nullptr});
    }
    for (const staged_component& each : staged_components())
        named.push_back({each.inventory_entry, "", each.device, each.inventory_entry});
    return named;
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
    for (named_component& named : named_components())
        if (std::optional<firmware_component> component = with_version(std::move(named)))
            components.push_back(std::move(*component));
    return components;
}

std::optional<firmware_component> find_firmware_component(const std::string& id) {
    for (named_component& named : named_components())
        if (named.id == id) return with_version(std::move(named));
    return std::nullopt;
}

std::optional<firmware_component> find_oem_firmware_component(const std::string& oem_id) {
    for (named_component& named : named_components())
        if (!named.oem_id.empty() && named.oem_id == oem_id) return with_version(std::move(named));
    return std::nullopt;
}

bool store_staged_version(const std::string& id, const std::string& version) {
    return StoreStagedFirmwareVersion(id.c_str(), version.c_str()) == 0;
}

}  // namespace odata::redfish
