#include "resources/systems/crashdump.h"

#include <string_view>

#include "base/utc_time.h"
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "platform/libipmi.h"
#include "platform/libipmi_sensors.h"
#include "platform/libweb.h"
#include "platform/plt_result.h"
#include "resources/managers/action_parameters.h"
#include "resources/systems/crashdump_uris.h"
#include "tasks/dump_file.h"
#include "tasks/dump_job.h"

namespace odata::redfish {
namespace {

constexpr const char* attachment_segment = "/attachment";

struct crashdump_entry {
    int kind;
    const char* id;
    const char* task_name;
    const char* action;
};

constexpr crashdump_entry entries[] = {
    {DUMP_CRASHDUMP_ON_DEMAND, "OnDemand", "Crashdump OnDemand", "Crashdump.OnDemand"},
    {DUMP_CRASHDUMP_TELEMETRY, "Telemetry", "Crashdump Telemetry", "Crashdump.Telemetry"},
};

const crashdump_entry& entry_of_kind(int kind) {
    return kind == DUMP_CRASHDUMP_TELEMETRY ? entries[1] : entries[0];
}

std::string entry_uri(const crashdump_entry& entry) {
    return std::string(crashdump_entries_uri) + "/" + entry.id;
}

// The entry that a path under Entries names by its segment after Entries.
const crashdump_entry& entry_in(std::string_view path) {
    const std::string_view rest = path.substr(std::string_view(crashdump_entries_uri).size() + 1);
    return rest.substr(0, rest.find('/')) == entries[1].id ? entries[1] : entries[0];
}

boost::json::object log_entry(const crashdump_entry& entry, const DumpInfo& info) {
    const std::string uri = entry_uri(entry);
    return boost::json::object({{"@odata.id", uri},
                                {"@odata.type", schema_type(schema_file_of("LogEntry"))},
                                {"Id", entry.id},
                                {"Name", std::string("CPU Crashdump ") + entry.id},
                                {"EntryType", "Oem"},
                                {"OemRecordFormat", "Crashdump"},
                                {"Severity", "OK"},
                                {"Created", platform::utc_timestamp(info.created)},
                                {"Message", info.file_name},
                                {"DiagnosticDataType", "OEM"},
                                {"OEMDiagnosticDataType", entry.id},
                                {"AdditionalDataURI", uri + attachment_segment},
                                {"AdditionalDataSizeBytes", info.size}},
                               answer_storage());
}

}  // namespace

crashdump_logservice::crashdump_logservice(request_context& context)
    : redfish(context, "LogService", std::string(schema_file_of("LogService").version),
              "Crashdump Service", crashdump_service_uri) {}

int crashdump_logservice::get(request_context&) {
    set_common_properties();
    set("Description", "The host processors' crash dumps, collected on demand");
    set("ServiceEnabled", true);
    set("MaxNumberOfRecords", std::size(entries));
    set("OverWritePolicy", "WrapsWhenFull");
    set("DateTime", platform::utc_timestamp(lx_time_get()));
    set("DateTimeLocalOffset", "+00:00");
    set("LogEntryType", "OEM");
    set("Status", status_object(SENSOR_HEALTH_OK));
    set("Entries", link(crashdump_entries_uri));
    set("Actions", {{"#LogService.ClearLog", {{"target", crashdump_clear_uri}}},
                    {"Oem",
                     {{"#Crashdump.OnDemand", {{"target", crashdump_on_demand_uri}}},
                      {"#Crashdump.Telemetry", {{"target", crashdump_telemetry_uri}}},
                      {"#Crashdump.SendRawPeci", {{"target", crashdump_send_raw_peci_uri}}}}}});
    return 0;
}

crashdump_logservice_clearlog::crashdump_logservice_clearlog(request_context& context)
    : webservice(context), service_(std::make_shared<crashdump_logservice>(context)) {}

int crashdump_logservice_clearlog::post(request_context& context) {
    check_no_parameters(context, "LogService.ClearLog");
    for (const crashdump_entry& entry : entries) {
        const int removed = DumpDelete(entry.kind);
        if (removed != PLT_OK && removed != PLT_ERR_NOT_FOUND) {
            console_log("[ERROR] Crashdump ClearLog: the %s dump was not removed\n", entry.id);
            throw_http_error(500, "Base.1.10.InternalError");
        }
    }
    service_->answer_success();
    return 0;
}

void crashdump_logservice_clearlog::send_response() { service_->send_response(); }

crashdumpcollection::crashdumpcollection(request_context& context)
    : redfish(context, "LogEntryCollection", "", "Crashdump Entries", crashdump_entries_uri) {}

// Members are expanded, as DMTF's LogEntryCollection has them.
int crashdumpcollection::get(request_context&) {
    set_common_properties();
    boost::json::array members(answer_storage());
    for (const crashdump_entry& entry : entries) {
        DumpInfo info{};
        if (DumpGetInfo(entry.kind, &info) == PLT_OK) members.push_back(log_entry(entry, info));
    }
    set("Members@odata.count", members.size());
    set("Members", std::move(members));
    return 0;
}

crashdump_logentry::crashdump_logentry(request_context& context)
    : redfish(context, "LogEntry", "", "Log Entry", context.uri) {}

int crashdump_logentry::get(request_context& context) {
    const crashdump_entry& entry = entry_in(context.uri);
    DumpInfo info{};
    if (DumpGetInfo(entry.kind, &info) != PLT_OK)
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"LogEntry", entry.id});
    for (const auto& [name, value] : log_entry(entry, info)) set(name, value);
    return 0;
}

int crashdump_attachment::get(request_context& context) {
    const crashdump_entry& entry = entry_in(context.uri);
    answer_dump_file(entry.kind, "LogEntry", entry.id);
    return 0;
}

int crashdump_collect::post(request_context& context) {
    const crashdump_entry& entry = entry_of_kind(kind_);
    check_no_parameters(context, entry.action);
    start_dump_task(kind_, entry.task_name, entry.action);
    return 0;
}

}  // namespace odata::redfish
