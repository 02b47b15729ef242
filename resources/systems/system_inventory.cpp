#include "resources/systems/system_inventory.h"

#include <cstring>

#include "framework/fixed_text.h"
#include "platform/libfru.h"
#include "platform/libipmi.h"
#include "platform/libipmi_chassis.h"
#include "platform/libsmbios.h"
#include "platform/libweb.h"
#include "resources/systems/smbios_lists.h"

namespace odata::redfish {
namespace {

std::string or_dash(const char* text) { return text ? text : "-"; }

smbios_inventory inventory_of(const St_SMBiosData& data) {
    smbios_inventory inventory;
    const St_SMBiosType1* system = data.type1_count > 0 ? &data.type1[0] : nullptr;
    inventory.manufacturer = or_dash(system ? system->manufacturer : nullptr);
    inventory.model = or_dash(system ? system->product_name : nullptr);
    inventory.sku = or_dash(system ? system->sku_number : nullptr);
    inventory.uuid = system ? system->uuid_text : "";
    for (int i = 0; i < data.type4_count; ++i) {
        if (!(data.type4[i].status & SMBIOS_CPU_SOCKET_POPULATED)) continue;
        if (inventory.processor_count++ == 0 && data.type4[i].version)
            inventory.processor_model = data.type4[i].version;
    }
    uint64_t memory_mib = 0;
    for (int i = 0; i < data.type17_count; ++i) {
        const uint32_t size = data.type17[i].size_mib;
        if (size != SMBIOS_MEMORY_SIZE_UNKNOWN) memory_mib += size;
    }
    inventory.memory_gib = memory_mib >> 10;
    return inventory;
}

}  // namespace

part_identity read_part_identity() {
    if (GetQuillonType() != 0) {
        return {fixed_text(at_p_St_GlobalVar->node_serial_number),
                fixed_text(at_p_St_GlobalVar->node_part_number)};
    }
    St_FRUInfo info{};
    if (ReadFRUInfo(FRU_BOARD_DEVICE, &info) != PLT_OK) {
        console_log("FRU parse fail\n");
        return {};
    }
    return {info.product_serial_number, info.product_part_number};
}

std::optional<smbios_inventory> read_smbios_inventory() {
    smbios_lists lists;
    if (lists.parse() != PLT_OK) {
        console_log("[ERROR] Failed to parse smbios\n");
        return std::nullopt;
    }
    return inventory_of(lists.data());
}

}  // namespace odata::redfish
