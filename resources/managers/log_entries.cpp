#include "resources/managers/log_entries.h"

#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"

namespace odata::redfish {

sel_entry_collection::sel_entry_collection(request_context& context, const sel_log_place& place)
    : redfish(context, "LogEntryCollection", "", "Log Entry Collection", sel_entries_uri(place)),
      place_(place) {}

// LogEntryCollection's members are expanded in DMTF's schema: each is the
// whole entry, as clients that read logs expect.
int sel_entry_collection::get(request_context&) {
    set_common_properties();
    boost::json::array members(answer_storage());
    for (const sel_entry& entry : read_sel_entries())
        members.push_back(sel_log_entry(place_, entry));
    set("Members@odata.count", members.size());
    set("Members", std::move(members));
    return 0;
}

sel_entry_resource::sel_entry_resource(request_context& context, const sel_log_place& place)
    : redfish(context, "LogEntry", "", "Log Entry", context.uri), place_(place) {}

// Ids are written without leading zeros: "01" names no entry.
int sel_entry_resource::get(request_context& context) {
    const int id = context.capture_number(0);
    const std::optional<sel_entry> entry =
        context.captures[0] == std::to_string(id) ? read_sel_entry(id) : std::nullopt;
    if (!entry)
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"LogEntry", context.captures[0]});
    for (const auto& [name, value] : sel_log_entry(place_, *entry)) set(name, value);
    return 0;
}

}  // namespace odata::redfish
