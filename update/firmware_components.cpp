#include "update/firmware_components.h"

#include "platform/libfwupdate.h"

namespace odata::redfish {
namespace {

struct running_component {
    const char* id;
    int device;
    bool updateable;  // by an action of the update service
};

constexpr running_component running_components[] = {
    {"BMC", FW_DEVICE_BMC, true},
    {"BIOS", FW_DEVICE_BIOS, true},
    {"CPLD_Motherboard", FW_DEVICE_CPLD, false},
};

constexpr const char* staged_components[] = {"Staging_BMC", "Staging_BIOS",
                                             "Staging_CPLD_Motherboard"};

std::optional<std::string> staged_version(const char* id) {
    char version[64] = {};
    if (GetStagedFirmwareVersion(id, version, sizeof version) != 0) return std::nullopt;
    return std::string(version);
}

}  // namespace

std::vector<firmware_component> firmware_components() {
    std::vector<firmware_component> components;
    for (const running_component& each : running_components) {
        char version[64] = {};
        if (GetFirmwareVersion(each.device, version, sizeof version) == 0)
            components.push_back({each.id, version, each.updateable});
    }
    for (const char* id : staged_components)
        if (std::optional<std::string> version = staged_version(id))
            components.push_back({id, *version, false});
    return components;
}

std::optional<firmware_component> find_firmware_component(const std::string& id) {
    for (firmware_component& each : firmware_components())
        if (each.id == id) return each;
    return std::nullopt;
}

bool store_staged_version(const std::string& id, const std::string& version) {
    return StoreStagedFirmwareVersion(id.c_str(), version.c_str()) == 0;
}

}  // namespace odata::redfish
