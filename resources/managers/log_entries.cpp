#include "resources/managers/log_entries.h"

#include "frontend/exception_http.h"
#include "resources/managers/manager_uris.h"
#include "resources/managers/sel_entries.h"

namespace odata::redfish {

managers_logentrycollection::managers_logentrycollection(request_context& context)
    : redfish(context, "LogEntryCollection", "", "Log Entry Collection", manager_sel_entries_uri) {}

int managers_logentrycollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members;
    for (const sel_entry& entry : read_sel_entries()) members.push_back(sel_entry_uri(entry.id));
    set_members(members);
    return 0;
}

managers_logentry::managers_logentry(request_context& context)
    : redfish(context, "LogEntry", "", "Log Entry", context.uri) {}

// Ids are written without leading zeros: "01" names no entry.
int managers_logentry::get(request_context& context) {
    const int id = context.capture_number(0);
    if (id < 1 || context.captures[0] != std::to_string(id)) throw_http(404);
    const std::vector<sel_entry> entries = read_sel_entries();
    if (static_cast<std::size_t>(id) > entries.size()) throw_http(404);
    for (const auto& [name, value] : sel_log_entry(entries[id - 1])) set(name, value);
    return 0;
}

}  // namespace odata::redfish
