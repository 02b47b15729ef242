#include "resources/systems/processor.h"

#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "resources/systems/member_uri.h"
#include "resources/systems/processor_identity.h"
#include "resources/systems/smbios_lists.h"
#include "resources/systems/smbios_members.h"
#include "resources/systems/system_health.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

constexpr uint8_t central_processor = 3;

boost::json::object processor_id(const St_SMBiosType4& record, bool x86) {
    boost::json::object id(
        {{"VendorId", smbios_text(record.manufacturer)},
         {"IdentificationRegisters", identification_registers(record.processor_id)}},
        answer_storage());
    if (!x86) return id;
    const x86_signature signature = decode_x86_signature(record.processor_id);
    id["EffectiveFamily"] = signature.effective_family;
    id["EffectiveModel"] = signature.effective_model;
    id["Step"] = signature.step;
    return id;
}

boost::json::object processor_status(const St_SMBiosType4& record) {
    if ((record.status & SMBIOS_CPU_STATUS_MASK) != SMBIOS_CPU_STATUS_ENABLED)
        return boost::json::object({{"State", "Disabled"}}, answer_storage());
    return status_object(processor_health_code());
}

}  // namespace

processor::processor(request_context& context)
    : redfish(context, "Processor", std::string(schema_file_of("Processor").version), "Processor",
              member_uri(processor_collection_uri, context)) {}

int processor::get(request_context& context) {
    smbios_lists lists;
    const St_SMBiosType4* record =
        lists.parse() == PLT_OK ? find_processor(lists.data(), member_number(context)) : nullptr;
    if (!record) throw_member_not_found("Processor", context);
    const processor_architecture* architecture = architecture_of_family(record->processor_family);
    set_common_properties();
    set("Socket", smbios_text(record->socket_designation));
    if (record->processor_type == central_processor) set("ProcessorType", "CPU");
    if (architecture) {
        set("ProcessorArchitecture", architecture->architecture);
        set("InstructionSet", architecture->instruction_set);
    }
    set("Manufacturer", smbios_text(record->manufacturer));
    set("Model", smbios_text(record->version));
    set("ProcessorId", processor_id(*record, architecture && architecture->architecture ==
                                                                 std::string_view("x86")));
    set("MaxSpeedMHz", record->max_speed_mhz);
    set("TotalCores", record->core_count);
    set("TotalEnabledCores", record->core_enabled);
    set("TotalThreads", record->thread_count);
    set("SerialNumber", smbios_text(record->serial_number));
    set("PartNumber", smbios_text(record->part_number));
    set("Status", processor_status(*record));
    return 0;
}

}  // namespace odata::redfish
