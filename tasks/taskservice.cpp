#include "tasks/taskservice.h"

#include <iostream>
#include <optional>

#include "base/utc_time.h"
#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libipmi.h"
#include "platform/libtask.h"
#include "tasks/task_uris.h"

namespace odata::redfish {
namespace {

constexpr std::string_view task_service_read_only[] = {"Id", "Name", "DateTime",
                                                       "CompletedTaskOverWritePolicy", "Status"};

}  // namespace

taskservice::taskservice(request_context& context)
    : redfish(context, "TaskService", std::string(schema_file_of("TaskService").version),
              "Tasks Service", task_service_uri) {}

int taskservice::get(request_context&) {
    TaskServiceConfig config{};
    if (TaskServiceGetConfig(&config) < 0) throw_http_error(500, "Base.1.10.InternalError");
    set_common_properties();
    set("ServiceEnabled", config.enabled != 0);
    set("DateTime", platform::utc_timestamp(lx_time_get()));
    set("CompletedTaskOverWritePolicy", config.overwrite_policy);
    set("LifeCycleEventOnTaskStateChange", config.life_cycle_event != 0);
    set("Status", {{"State", config.enabled ? "Enabled" : "Disabled"}, {"Health", "OK"}});
    set("Tasks", link(tasks_uri));
    return 0;
}

int taskservice::patch(request_context& context) {
    const boost::json::value body = context.body_json();
    result_record result = general_error();
    std::optional<bool> enabled;
    for (const auto& [key, value] : request_object(body)) {
        const std::string name(key);
        if (name == "ServiceEnabled") {
            enabled = require_boolean(value, name, result);
        } else if (listed_in(task_service_read_only, name)) {
            add_property_message(result, "Base.1.10.PropertyNotWritable", name);
        } else {
            unknown_property::in_patch().report(result, name);
        }
    }
    if (!result.entries.empty()) throw_http_result(400, result);
    if (enabled && TaskServiceSetStartStop(*enabled ? 1 : 0) < 0) throw_http_result(400, result);
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
