#include "tasks/accepted_response.h"

#include <iostream>

#include "framework/schema_files.h"
#include "frontend/response_headers.h"
#include "frontend/result_writer.h"
#include "platform/libweb.h"
#include "tasks/task_states.h"
#include "tasks/task_uris.h"

namespace odata::redfish {
namespace {

constexpr int retry_after_seconds = 5;
constexpr const char* accepted_text =
    "Successfully Accepted Request. Please see the location header and ExtendedInfo for more "
    "information.";

}  // namespace

std::optional<TaskInfo> create_task(const char* name, const char* operation) {
    int task_id = 0;
    TaskInfo task{};
    if (TaskServiceAddTask(name, &task_id) < 0 || TaskServiceGetTaskInfo(task_id, &task) < 0) {
        console_log("[ERROR] %s Create Task Service\n", operation);
        return std::nullopt;
    }
    return task;
}

namespace {

// The task's own members lead the body, so that clients that read a 202
// body as the task (as DSP0266 allows) find it there; they tell it from an
// error body by its type. No @odata.id: some clients would then poll the
// task, which never answers 202, instead of the monitor.
std::string accepted_body(const TaskInfo& task) {
    result_record result{"OemAccepted", accepted_text, {}};
    add_message(result, "TWR.1.0.OemSimpleupdateAcceptedMessage", {task_uri(task.id)});
    boost::json::object body = {{"@odata.type", schema_type(schema_file_of("Task"))},
                                {"Id", std::to_string(task.id)},
                                {"Name", task.name},
                                {"TaskState", task_state_text(task.state)}};
    for (auto& [key, value] : result_object(result)) body[key] = std::move(value);
    return boost::json::serialize(body);
}

}  // namespace

void answer_accepted(const TaskInfo& task) {
    const std::string body = accepted_body(task);
    write_status_line(202);
    set_response_header(response_header::location, task_monitor_uri(task.monitor_id));
    set_response_header(response_header::retry_after, std::to_string(retry_after_seconds));
    write_header_block(body.size());
    std::cout << body;
}

}  // namespace odata::redfish
