#include "platform/sim/memory_modules.h"

#include <vector>

#include "platform/sim/smbios_records.h"
#include "platform/sim/smbios_store.h"

namespace platform {
namespace {

// The size word of a memory device; 0 is an empty slot.
constexpr std::size_t size_offset = 0x0C;

bool holds_module(const smbios::structure& each, const std::string& device_locator) {
    if (each.type != smbios::memory_device) return false;
    const char* locator = each.text(0x10);
    return locator && device_locator == locator && smbios::decode_memory_device(each).size_mib != 0;
}

}  // namespace

module_removal remove_memory_module(const std::string& device_locator) {
    std::shared_ptr<const smbios_snapshot> snapshot;
    if (load_smbios_structures(snapshot) != PLT_OK) return module_removal::table_unreadable;
    for (const smbios::structure& each : snapshot->structures) {
        if (!holds_module(each, device_locator)) continue;
        const std::size_t at =
            static_cast<std::size_t>(each.formatted.data() - snapshot->table.data());
        std::string changed = snapshot->table;
        changed[at + size_offset] = 0;
        changed[at + size_offset + 1] = 0;
        return write_smbios_table(changed) ? module_removal::removed : module_removal::not_stored;
    }
    return module_removal::no_such_module;
}

}  // namespace platform
