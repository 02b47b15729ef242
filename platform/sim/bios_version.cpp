// The running BIOS's version, from the BIOS information structure that the
// BIOS put in the SMBIOS table.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "platform/libbios.h"
#include "platform/sim/smbios_records.h"
#include "platform/sim/smbios_store.h"

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
