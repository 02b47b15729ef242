// The BMC event log (SEL) as Redfish LogEntry resources, numbered from 1
// oldest first.
#pragma once

#include <boost/json.hpp>
#include <string>
#include <vector>

namespace odata::redfish {

struct sel_entry {
    int id;
    long long time;
    int code;
    std::string text;
};

std::vector<sel_entry> read_sel_entries();

std::string sel_entry_uri(int id);

// The LogEntry resource of one record.
boost::json::object sel_log_entry(const sel_entry& entry);

}  // namespace odata::redfish
