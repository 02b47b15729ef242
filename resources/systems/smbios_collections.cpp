// The Processors and Memory collections of the system.
#include "platform/libweb.h"
#include "resources/systems/memorycollection.h"
#include "resources/systems/processorcollection.h"
#include "resources/systems/smbios_lists.h"
#include "resources/systems/smbios_members.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

// Empty (and logged) when the table cannot be parsed: the service then
// knows of no processor and no module.
template <typename ids_of>
std::vector<std::string> smbios_member_uris(const char* collection_uri, ids_of ids) {
    smbios_lists lists;
    if (lists.parse() != PLT_OK) {
        console_log("[ERROR] Failed to parse smbios\n");
        return {};
    }
    return member_uris(collection_uri, ids(lists.data()));
}

}  // namespace

processorcollection::processorcollection(request_context& context)
    : redfish(context, "ProcessorCollection", "", "Processors Collection",
              processor_collection_uri) {}

int processorcollection::get(request_context&) {
    set_common_properties();
    set_members(smbios_member_uris(processor_collection_uri, processor_ids));
    return 0;
}

memorycollection::memorycollection(request_context& context)
    : redfish(context, "MemoryCollection", "", "Memory Module Collection", memory_collection_uri) {}

int memorycollection::get(request_context&) {
    set_common_properties();
    set_members(smbios_member_uris(memory_collection_uri, memory_ids));
    return 0;
}

}  // namespace odata::redfish
