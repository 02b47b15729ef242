#include "tasks/dump_kinds.h"

#include <stdexcept>

#include "platform/libdump.h"
#include "tasks/dump_uris.h"

namespace odata::redfish {

const std::vector<dump_kind>& dump_kinds() {
    static const std::vector<dump_kind> kinds = {
        {DUMP_HOST_CRASH, "HostCrashDump", "TwrDump", "Create Dump", "CreateDump", false},
        {DUMP_BMC_EVIDENCE, "BMCEvidenceDump", "TwrBMCEvidenceDump", "BMC Dump Generate",
         "BMCEvidenceDump", true},
        {DUMP_BIOS_EVIDENCE, "BIOSEvidenceDump", "TwrBIOSEvidenceDump", "BIOS Dump Generate",
         "BIOSEvidenceDump", true},
        {DUMP_DRIVE_SMART, "DriveSmartDump", "TwrDriveSmartDump", "Drive SMART Dump Generate",
         "DriveSmartDump", true},
    };
    return kinds;
}

const dump_kind* find_dump_kind(std::string_view id) {
    for (const dump_kind& each : dump_kinds())
        if (id == each.id) return &each;
    return nullptr;
}

const dump_kind& dump_kind_of(int kind) {
    for (const dump_kind& each : dump_kinds())
        if (each.kind == kind) return each;
    throw std::out_of_range("no dump resource of kind " + std::to_string(kind));
}

std::string dump_uri(const dump_kind& dump) { return std::string(dumps_uri) + "/" + dump.id; }

std::string dump_action_uri(const dump_kind& dump, std::string_view action) {
    return dump_uri(dump) + "/Actions/" + dump.action_type + "." + std::string(action);
}

}  // namespace odata::redfish
