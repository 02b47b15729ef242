#include "update/firmware_components.h"

#include <sys/stat.h>

#include <fstream>

#include "base/atomic_file.h"
#include "base/bmc_root.h"
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

constexpr size_t max_version_length = 32;

std::string staged_file(const std::string& id) {
    return platform::bmc_path("/tmp/fwinventory/" + id);
}

std::optional<std::string> staged_version(const std::string& id) {
    std::ifstream file(staged_file(id));
    std::string version;
    if (!file || !std::getline(file, version)) return std::nullopt;
    return version.substr(0, max_version_length);
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
    const std::string directory = platform::bmc_path("/tmp/fwinventory");
    ::mkdir(directory.c_str(), 0755);
    return platform::write_file_atomically(staged_file(id), version + "\n", 0600);
}

}  // namespace odata::redfish
