#include "resources/systems/memory.h"

#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "platform/libipmi_sensors.h"
#include "resources/systems/member_uri.h"
#include "resources/systems/smbios_lists.h"
#include "resources/systems/smbios_members.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

struct device_type_row {
    uint8_t smbios_type;
    const char* memory_device_type;
};

// SMBIOS memory types that have a Redfish MemoryDeviceType.
constexpr device_type_row device_types[] = {
    {0x12, "DDR"},  {0x13, "DDR2"},         {0x18, "DDR3"},
    {0x1A, "DDR4"}, {0x1D, "LPDDR3_SDRAM"}, {0x1E, "LPDDR4_SDRAM"},
};

const char* memory_device_type(uint8_t smbios_type) {
    for (const device_type_row& row : device_types)
        if (row.smbios_type == smbios_type) return row.memory_device_type;
    return nullptr;
}

}  // namespace

memory::memory(request_context& context)
    : redfish(context, "Memory", std::string(schema_file_of("Memory").version), "Memory",
              member_uri(memory_collection_uri, context)) {}

int memory::get(request_context& context) {
    smbios_lists lists;
    const St_SMBiosType17* record =
        lists.parse() == PLT_OK ? find_memory(lists.data(), member_number(context)) : nullptr;
    if (!record) throw_member_not_found("Memory", context);
    set_common_properties();
    set("MemoryType", "DRAM");
    if (const char* device_type = memory_device_type(record->memory_type))
        set("MemoryDeviceType", device_type);
    if (record->size_mib != SMBIOS_MEMORY_SIZE_UNKNOWN) set("CapacityMiB", record->size_mib);
    set("DataWidthBits", record->data_width_bits);
    set("BusWidthBits", record->total_width_bits);
    set("Manufacturer", smbios_text(record->manufacturer));
    set("SerialNumber", smbios_text(record->serial_number));
    set("PartNumber", smbios_text(record->part_number));
    if (record->speed_mts != 0) set("AllowedSpeedsMHz", {record->speed_mts});
    if (record->configured_speed_mts != 0) set("OperatingSpeedMhz", record->configured_speed_mts);
    if (record->rank != 0) set("RankCount", record->rank);
    set("DeviceLocator", smbios_text(record->device_locator));
    set("Status", status_object(UtilCheckAllMemHealth()));
    set("Metrics", link(uri() + "/MemoryMetrics"));
    return 0;
}

}  // namespace odata::redfish
