// SMBIOS structures of type 0, 1, 4 and 17 decoded into the records of
// libsmbios.h. String fields point into the structure's table.
#pragma once

#include "platform/libsmbios.h"
#include "platform/sim/smbios_table.h"

namespace platform::smbios {

enum structure_type : uint8_t {
    bios_information = 0,
    system_information = 1,
    processor_information = 4,
    physical_memory_array = 16,
    memory_device = 17,
};

// The BIOS version string of a BIOS information structure; null if none.
const char* bios_version(const structure& bios);

St_SMBiosType1 decode_system(const structure& system);
St_SMBiosType4 decode_processor(const structure& processor);
St_SMBiosType17 decode_memory_device(const structure& device);

}  // namespace platform::smbios
