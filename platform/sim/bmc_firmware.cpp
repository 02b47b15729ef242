#include "platform/sim/bmc_firmware.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "base/bmc_root.h"
#include "platform/libbmc.h"
#include "platform/sim/state_ini.h"

namespace fs = std::filesystem;
namespace pt = boost::property_tree;

namespace {

constexpr const char* default_version = "1.00.00";
constexpr std::size_t max_version_length = 63;

// What the BMC's boot puts back under /tmp before any service starts (the
// web server's programs and static content) is kept, and so are lock
// files, which running processes of the simulator still hold; the
// resource directories that the Redfish service makes go.
bool survives_restart(const fs::path& entry, const fs::path& tmp) {
    const fs::path relative = entry.lexically_relative(tmp);
    if (relative == "web" || relative == "www") return true;
    return entry.extension() == ".lock";
}

bool clear_volatile_state() {
    const fs::path tmp = platform::bmc_path("/tmp");
    std::error_code error;
    if (!fs::exists(tmp, error)) return true;
    bool cleared = true;
    for (const fs::directory_entry& entry : fs::directory_iterator(tmp, error)) {
        if (survives_restart(entry.path(), tmp)) continue;
        fs::remove_all(entry.path(), error);
        cleared &= !error;
    }
    fs::remove_all(tmp / "www" / "redfish", error);
    return cleared && !error;
}

}  // namespace

namespace platform {

const std::string& bmc_settings_file() {
    static fixed_bmc_path path("/var/bmc/bmc.ini");
    return path.get();
}

bool set_bmc_firmware_version(const std::string& version) {
    if (version.empty() || version.size() > max_version_length) return false;
    for (char c : version)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) return false;
    return sim::update_state_ini(bmc_settings_file(), [&](pt::ptree& state) {
        state.put("Firmware.Version", version);
        return true;
    });
}

long long bmc_reset_count() {
    return sim::stored_state_ini(bmc_settings_file())->get("Reset.Count", 0LL);
}

}  // namespace platform

extern "C" int UtilGetBmcFwVersion(char* version, int size) {
    if (!version || size <= 0) return PLT_ERR_ARGUMENT;
    const std::string stored = platform::sim::stored_state_ini(platform::bmc_settings_file())
                                   ->get("Firmware.Version", std::string(default_version));
    const std::size_t length = std::min(stored.size(), static_cast<std::size_t>(size - 1));
    std::memcpy(version, stored.data(), length);
    version[length] = '\0';
    return PLT_OK;
}

extern "C" int PltBMC_Reset(void) {
    const bool counted =
        platform::sim::update_state_ini(platform::bmc_settings_file(), [](pt::ptree& state) {
            state.put("Reset.Count", state.get("Reset.Count", 0LL) + 1);
            return true;
        });
    return counted && clear_volatile_state() ? PLT_OK : PLT_ERR_IO;
}
