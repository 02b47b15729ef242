// The host's SMBIOS structure table as the BIOS hands it to the BMC,
// <root>/nv/bios/bios_fullsmbios; generated on first use when missing.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/sim/smbios_table.h"

namespace platform {

const std::string& smbios_table_file();

// The table of a fresh BMC: a two-socket server with 16 memory slots, 8 of
// them holding 32 GiB modules; always the same.
std::string generated_smbios_table();

// The table: PLT_OK, or PLT_ERR_IO when it can be neither read nor generated.
int load_smbios_table(std::string& table);

// The table and its structures, which point into it.
struct smbios_snapshot {
    std::string table;
    std::vector<smbios::structure> structures;
};

// The table as it is now, parsed once per version of its file: PLT_OK,
// PLT_ERR_IO, or PLT_ERR_FORMAT when the table is truncated or corrupt.
int load_smbios_structures(std::shared_ptr<const smbios_snapshot>& snapshot);

// Replaces the table as a whole.
bool write_smbios_table(const std::string& table);

// What a starting BIOS does: writes the version of the flashed BIOS into the
// table's BIOS information; false when the table is unreadable or unwritable.
bool post_bios_version();

}  // namespace platform
