#include "tasks/task.h"

#include <iostream>
#include <string>

#include "base/bmc_root.h"
#include "base/utc_time.h"
#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "frontend/result_writer.h"
#include "platform/libfwupdate.h"
#include "platform/libtask.h"
#include "platform/libweb.h"
#include "tasks/task_messages.h"
#include "tasks/task_states.h"
#include "tasks/task_uris.h"

namespace odata::redfish {
namespace {

constexpr const char* bios_update_task = "BIOS Update";
constexpr const char* cancel_origin = "redfish/v1/TaskService/Tasks";

// The task of the route's id; 404 for an id outside 1 to count.
TaskInfo requested_task(const request_context& context) {
    const int task_id = context.capture_number(0);
    int count = 0;
    if (TaskServiceGetTaskCount(&count) < 0) {
        console_log("[Task] can't get task_count\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    if (task_id < 1 || task_id > count) throw_http(404);
    TaskInfo info{};
    if (TaskServiceGetTaskInfo(task_id, &info) < 0) {
        console_log("[Task] cant' get task_information\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    return info;
}

// A BIOS image staged for the next host reset is dropped with its task.
// The lock it held is the task's, freed by its end: another update may
// hold it already, and another BIOS task's worker keeps it until it ends.
void drop_staged_bios(int task_id) { DropBiosUpdateOnReset(task_id); }

}  // namespace

task::task(request_context& context)
    : redfish(context, "Task", std::string(schema_file_of("Task").version), "",
              task_uri(context.capture_number(0))) {}

int task::get(request_context& context) {
    const TaskInfo info = requested_task(context);
    name_ = info.name;
    set_common_properties();
    set("TaskState", task_state_text(info.state));
    set("StartTime", platform::utc_timestamp(info.start_time));
    if (task_shows_end_time(info.state)) set("EndTime", platform::utc_timestamp(info.end_time));
    set("PercentComplete", info.percent);
    set("HidePayload", info.hide_payload != 0);
    set("TaskMonitor", task_monitor_uri(info.monitor_id));
    set("TaskStatus", info.health);
    set("Messages", task_messages(info));
    return 0;
}

int task::del(request_context& context) {
    const TaskInfo info = requested_task(context);
    const std::string id_text = std::to_string(info.id);
    if (TaskServiceUpdateTaskPercentage(info.id, 0) < 0 ||
        TaskServiceUpdateTaskState(info.id, TASK_STATE_KILLED) < 0 ||
        TaskServiceUpdateTaskETime(info.id) < 0 ||
        TaskServiceUpdateTaskMsgFromEvt(info.id, TASK_EVENT_CANCELLED, id_text.c_str(),
                                        cancel_origin) < 0)
        throw_http_error(500, "Base.1.10.InternalError");
    if (std::string_view(info.name) == bios_update_task) drop_staged_bios(info.id);
    write_status_line(200);
    set_response_header(response_header::location, task_monitor_uri(info.monitor_id));
    set_body(render_result({"Success", "Successfully Completed Request.", {}}));
    return 0;
}

}  // namespace odata::redfish
