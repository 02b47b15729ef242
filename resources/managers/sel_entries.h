// The BMC event log (SEL) as Redfish LogEntry resources, numbered from 1
// oldest first. The same log is published twice: as the BMC's own log and
// as the host system's, since its records are about both.
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "frontend/request_context.h"

namespace odata::redfish {

struct sel_entry {
    int id;
    long long time;
    int code;
    std::string text;
};

// Where one view of the SEL is published.
struct sel_log_place {
    const char* services_uri;  // ".../LogServices"
    const char* service_uri;   // ".../LogServices/Log1"
    const char* owner_uri;     // the manager or system whose log it is
    const char* description;
    // The system's view of the log also shows its alert state, which the
    // TwrLogService.ClearAcknowledgements action acknowledges.
    bool shows_alerts;
};

extern const sel_log_place manager_sel_log;
extern const sel_log_place system_sel_log;

std::vector<sel_entry> read_sel_entries();
// Entry id alone, without holding the others; none when there is no such id.
std::optional<sel_entry> read_sel_entry(int id);

std::string sel_entries_uri(const sel_log_place& place);
std::string sel_clear_target_uri(const sel_log_place& place);
std::string sel_clear_acknowledgements_target_uri(const sel_log_place& place);
std::string sel_entry_uri(const sel_log_place& place, int id);

// The LogEntry resource of one record, built in the answer's storage.
boost::json::object sel_log_entry(const sel_log_place& place, const sel_entry& entry);

// A handler of the SEL bound to one place, as the route table names it.
template <class Handler, const sel_log_place& place>
class sel_handler_at : public Handler {
public:
    explicit sel_handler_at(request_context& context) : Handler(context, place) {}
};

}  // namespace odata::redfish
