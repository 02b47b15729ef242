// The ECC error counts and alarms of the host's memory modules.
#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "resources/systems/member_uri.h"
#include "resources/systems/memorymetrics.h"
#include "resources/systems/smbios_lists.h"
#include "resources/systems/smbios_members.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {

St_MemoryErrorCounts module_error_counts(const St_SMBiosType17& module) {
    St_MemoryErrorCounts counts{};
    if (!module.device_locator || MemGetErrorCounts(module.device_locator, &counts) != PLT_OK)
        return {};
    return counts;
}

boost::json::object error_count_period(uint64_t correctable, uint64_t uncorrectable) {
    return boost::json::object(
        {{"CorrectableECCErrorCount", correctable}, {"UncorrectableECCErrorCount", uncorrectable}},
        answer_storage());
}

memorymetrics::memorymetrics(request_context& context)
    : redfish(context, "MemoryMetrics", std::string(schema_file_of("MemoryMetrics").version),
              "Memory Metrics", member_uri(memory_collection_uri, context) + "/MemoryMetrics") {}

int memorymetrics::get(request_context& context) {
    smbios_lists lists;
    const St_SMBiosType17* module =
        lists.parse() == PLT_OK ? find_memory(lists.data(), member_number(context)) : nullptr;
    if (!module) throw_member_not_found("Memory", context);
    const St_MemoryErrorCounts counts = module_error_counts(*module);
    set_common_properties();
    set("Description", "ECC errors of the module in " + smbios_text(module->device_locator));
    set("CurrentPeriod", error_count_period(counts.correctable, counts.uncorrectable));
    set("HealthData", {{"AlarmTrips",
                        {{"CorrectableECCError", counts.correctable > 0},
                         {"UncorrectableECCError", counts.uncorrectable > 0}}}});
    return 0;
}

}  // namespace odata::redfish
