// The dumps of the dump service, one resource per type, and the tasks that
// generate them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace odata::redfish {

struct dump_kind {
    int kind;                  // DUMP_* of the platform
    const char* id;            // the resource's Id: "BMCEvidenceDump"
    const char* action_type;   // the namespace of its actions: "TwrBMCEvidenceDump"
    const char* task_name;     // of its Generate action's task
    const char* operation;     // named in the log when its task cannot be made
    bool generated_by_itself;  // it has a Generate action
};

// HostCrashDump, BMCEvidenceDump, BIOSEvidenceDump, DriveSmartDump.
const std::vector<dump_kind>& dump_kinds();
// Null for an Id that names no dump.
const dump_kind* find_dump_kind(std::string_view id);
const dump_kind& dump_kind_of(int kind);

std::string dump_uri(const dump_kind& dump);
// ".../Dumps/<Id>/Actions/<action type>.<action>"
std::string dump_action_uri(const dump_kind& dump, std::string_view action);

}  // namespace odata::redfish
