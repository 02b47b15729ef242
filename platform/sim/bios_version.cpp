// The running BIOS's version, from the BIOS information structure that the
// BIOS put in the SMBIOS table.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "platform/libbios.h"
#include "platform/libfwupdate.h"
#include "platform/sim/firmware_state.h"
#include "platform/sim/smbios_records.h"
#include "platform/sim/smbios_store.h"

namespace platform {
namespace {

// The structure's string set with its version string replaced.
std::string strings_with_version(const smbios::structure& bios, const std::string& version) {
    const std::size_t number = bios.byte(0x05);
    std::string strings;
    for (std::size_t index = 0; index < bios.strings.size(); ++index)
        strings.append(index + 1 == number ? version : std::string(bios.strings[index])) += '\0';
    return strings.empty() ? std::string(2, '\0') : strings + '\0';
}

std::size_t string_set_size(const smbios::structure& bios) {
    std::size_t size = 1;
    for (const char* text : bios.strings) size += std::strlen(text) + 1;
    return bios.strings.empty() ? 2 : size;
}

}  // namespace

// The BIOS that starts puts its own version into the table it hands over:
// the one the last flash left.
bool post_bios_version() {
    const std::string version = sim::firmware_version(FW_DEVICE_BIOS);
    std::shared_ptr<const smbios_snapshot> snapshot;
    if (load_smbios_structures(snapshot) != PLT_OK) return false;
    for (const smbios::structure& each : snapshot->structures) {
        if (each.type != smbios::bios_information || !smbios::bios_version(each)) continue;
        const std::size_t at =
            static_cast<std::size_t>(each.formatted.data() - snapshot->table.data()) +
            each.formatted.size();
        std::string changed = snapshot->table;
        changed.replace(at, string_set_size(each), strings_with_version(each, version));
        return write_smbios_table(changed);
    }
    return false;
}

}  // namespace platform

extern "C" int UtilGetLatestBiosRev(char* version, int size) {
    namespace smbios = platform::smbios;
    if (!version || size < 1) return PLT_ERR_ARGUMENT;
    std::shared_ptr<const platform::smbios_snapshot> snapshot;
    int loaded = platform::load_smbios_structures(snapshot);
    if (loaded != PLT_OK) return loaded;
    for (const smbios::structure& each : snapshot->structures) {
        const char* text =
            each.type == smbios::bios_information ? smbios::bios_version(each) : nullptr;
        if (text) {
            std::size_t length = std::min(std::strlen(text), static_cast<std::size_t>(size - 1));
            std::memcpy(version, text, length);
            version[length] = '\0';
            return PLT_OK;
        }
    }
    return PLT_ERR_NOT_FOUND;
}
