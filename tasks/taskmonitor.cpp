#include "tasks/taskmonitor.h"

#include <iostream>

#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "frontend/status_line.h"
#include "platform/libtask.h"
#include "platform/libweb.h"
#include "tasks/task_messages.h"
#include "tasks/task_states.h"
#include "tasks/task_uris.h"

namespace odata::redfish {
namespace {

// The monitor of "/TaskMonitor/<monitor id>", or of "/Tasks/<id>/TaskMonitor".
bool read_monitored_task(const request_context& context, TaskInfo& info) {
    const std::string_view last = context.segment_from_end(0).value_or("");
    if (last == "TaskMonitor") return TaskServiceGetTaskInfo(context.capture_number(0), &info) >= 0;
    const std::string monitor_id(last.substr(0, TASK_MONITOR_ID_MAX));
    return TaskServiceGetTaskInfoByMonitorId(monitor_id.c_str(), &info) >= 0;
}

[[noreturn]] void throw_task_exception(const TaskInfo& info) {
    result_record result = general_error();
    const std::string message = latest_task_message(info);
    if (!message.empty()) result.message = message;
    result.entries = task_messages(info);
    throw_http_result(400, result);
}

}  // namespace

taskmonitor::taskmonitor(request_context& context)
    : redfish(context, "Task", std::string(schema_file_of("Task").version), "", context.uri) {}

int taskmonitor::get(request_context& context) {
    TaskInfo info{};
    if (!read_monitored_task(context, info)) {
        console_log("[TaskMonitor] cant' get task_information\n");
        throw_http(404);
    }
    const int status = task_monitor_status(info.state);
    if (status == 400) throw_task_exception(info);
    if (status == 500) throw_http(500);
    write_status_line(status);
    if (status == 202)
        set_response_header(response_header::location, task_monitor_uri(info.monitor_id));
    uri_ = task_uri(info.id);
    name_ = info.name;
    set_common_properties(std::to_string(info.id));
    set("TaskState", task_state_text(info.state));
    set("PercentComplete", info.percent);
    return 0;
}

}  // namespace odata::redfish
