// The simulated staging inventory: one file per entry under
// /tmp/fwinventory holding the staged image's version.
#include <sys/stat.h>

#include <cstring>
#include <string>

#include "base/atomic_file.h"
#include "base/bmc_root.h"
#include "platform/libfwupdate.h"
#include "platform/sim/firmware_state.h"
#include "platform/sim/sim_file.h"

namespace {

constexpr size_t max_version_length = 32;

const std::string& inventory_directory() {
    static platform::fixed_bmc_path path("/tmp/fwinventory");
    return path.get();
}

// An entry is one plain name: it never leaves the directory.
bool plain_entry(const char* entry) {
    return entry && entry[0] != '\0' && entry[0] != '.' && !std::strchr(entry, '/');
}

}  // namespace

extern "C" {

int StoreStagedFirmwareVersion(const char* entry, const char* version) {
    if (!plain_entry(entry) || !version) return -1;
    ::mkdir(inventory_directory().c_str(), 0755);
    const bool stored = platform::write_file_atomically(inventory_directory() + "/" + entry,
                                                        std::string(version) + "\n", 0600);
    return stored ? 0 : -1;
}

int GetStagedFirmwareVersion(const char* entry, char* version, int size) {
    std::string text;
    if (!plain_entry(entry) || !version || size < 1 ||
        !platform::sim::read_file(inventory_directory() + "/" + entry, text))
        return -1;
    // An empty version is an entry taken back.
    const std::string line = text.substr(0, text.find('\n'));
    if (line.empty()) return -1;
    platform::sim::copy_out(line.substr(0, max_version_length), version, size);
    return 0;
}

}  // extern "C"
