#include "platform/sim/smbios_store.h"

#include "base/bmc_root.h"
#include "base/file_cache.h"
#include "platform/plt_result.h"
#include "platform/sim/generated_file.h"
#include "platform/sim/sim_file.h"

namespace platform {

const std::string& smbios_table_file() {
    static fixed_bmc_path path("/nv/bios/bios_fullsmbios");
    return path.get();
}

int load_smbios_table(std::string& table) {
    return sim::read_or_generate(smbios_table_file(), generated_smbios_table, table);
}

int load_smbios_structures(std::shared_ptr<const smbios_snapshot>& snapshot) {
    static file_cache<smbios_snapshot> cache;
    return cache.get(
        smbios_table_file(),
        [](smbios_snapshot& parsed) -> int {
            int loaded = load_smbios_table(parsed.table);
            if (loaded != PLT_OK) return loaded;
            return smbios::parse_table(parsed.table, parsed.structures) ? PLT_OK : PLT_ERR_FORMAT;
        },
        snapshot);
}

bool write_smbios_table(const std::string& table) {
    return sim::replace_file(smbios_table_file(), table, 0644);
}

}  // namespace platform
