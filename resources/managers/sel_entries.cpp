#include "resources/managers/sel_entries.h"

#include "base/utc_time.h"
#include "framework/redfish.h"
#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "platform/libsel.h"
#include "platform/libweb.h"
#include "resources/managers/manager_uris.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

// A failed login is the one record that asks an administrator to look.
constexpr int event_failed_login = 137;

int collect(const St_SelRecord* record, void* context) {
    auto& entries = *static_cast<std::vector<sel_entry>*>(context);
    entries.push_back({static_cast<int>(entries.size()) + 1, record->time, record->code,
                       record->text ? record->text : ""});
    return 0;
}

}  // namespace

const sel_log_place manager_sel_log = {manager_log_services_uri, manager_sel_uri, manager_uri,
                                       "The BMC's system event log (SEL)", false};
const sel_log_place system_sel_log = {system_log_services_uri, system_sel_uri, system_uri,
                                      "The host's system event log (SEL), kept by the BMC", true};

std::vector<sel_entry> read_sel_entries() {
    std::vector<sel_entry> entries;
    if (LibVisitSysEvtLog(collect, &entries) < 0) console_log("[ERROR] SEL unreadable\n");
    return entries;
}

std::optional<sel_entry> read_sel_entry(int id) {
    struct search {
        int id;
        int seen;
        std::optional<sel_entry> found;
    } wanted{id, 0, std::nullopt};
    auto stop_at_id = [](const St_SelRecord* record, void* context) {
        auto& search = *static_cast<struct search*>(context);
        if (++search.seen < search.id) return 0;
        search.found =
            sel_entry{search.id, record->time, record->code, record->text ? record->text : ""};
        return 1;
    };
    if (id < 1 || LibVisitSysEvtLog(stop_at_id, &wanted) < 0) return std::nullopt;
    return wanted.found;
}

std::string sel_entries_uri(const sel_log_place& place) {
    return std::string(place.service_uri) + "/Entries";
}

std::string sel_clear_target_uri(const sel_log_place& place) {
    return std::string(place.service_uri) + "/Actions/LogService.ClearLog";
}

std::string sel_clear_acknowledgements_target_uri(const sel_log_place& place) {
    return std::string(place.service_uri) + "/Actions/Oem/TwrLogService.ClearAcknowledgements";
}

std::string sel_entry_uri(const sel_log_place& place, int id) {
    return sel_entries_uri(place) + "/" + std::to_string(id);
}

boost::json::object sel_log_entry(const sel_log_place& place, const sel_entry& entry) {
    const std::string id = std::to_string(entry.id);
    return boost::json::object({{"@odata.id", sel_entry_uri(place, entry.id)},
                                {"@odata.type", schema_type(schema_file_of("LogEntry"))},
                                {"Id", id},
                                {"Name", "Log Entry " + id},
                                {"EntryType", "SEL"},
                                {"Severity", entry.code == event_failed_login ? "Warning" : "OK"},
                                {"Created", platform::utc_timestamp(entry.time)},
                                {"Message", entry.text},
                                {"Links", {{"OriginOfCondition", link(place.owner_uri)}}}},
                               answer_storage());
}

}  // namespace odata::redfish
