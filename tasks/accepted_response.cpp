#include "tasks/accepted_response.h"

#include <iostream>

#include "frontend/result_writer.h"
#include "platform/libweb.h"
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

void answer_accepted(const TaskInfo& task) {
    result_record result{"OemAccepted", accepted_text, {}};
    add_message(result, "TWR.1.0.OemSimpleupdateAcceptedMessage", {task_uri(task.id)});
    std::cout << "Status: 202 Accepted\r\n"
              << "Location: " << task_monitor_uri(task.monitor_id) << "\r\n"
              << "Retry-After: " << retry_after_seconds << "\r\n";
    write_result(result);
}

}  // namespace odata::redfish
