#include "resources/systems/storage_task.h"

#include <unistd.h>

#include <string>

#include "frontend/exception_http.h"
#include "platform/libtask.h"
#include "platform/libweb.h"
#include "platform/plt_result.h"
#include "tasks/accepted_response.h"
#include "tasks/task_worker.h"

namespace odata::redfish {
namespace {

constexpr useconds_t poll_interval_us = 200000;
// The longest operation the controllers report, 3600 s, in polls, and some.
constexpr int max_polls = 3600 * 5 + 50;

bool cancelled(int task_id) {
    TaskInfo task{};
    return TaskServiceGetTaskInfo(task_id, &task) == 0 && task.state == TASK_STATE_KILLED;
}

void end_task(int task_id, const storage_operation& operation, int percent) {
    const bool completed = percent == 100;
    const std::string outcome = std::string(operation.task_name) + " of " + operation.subject +
                                (completed     ? " completed"
                                 : percent < 0 ? " was stopped"
                                               : " did not end in time");
    TaskMessage message{};
    TaskServiceEventMessage(completed ? "StorageOperationCompleted" : "StorageOperationFailed",
                            outcome.c_str(), &message);
    TaskServiceAddTaskMessage(task_id, &message);
    TaskServiceUpdateTaskETime(task_id);
    TaskServiceUpdateTaskState(task_id, completed     ? TASK_STATE_COMPLETED
                                        : percent < 0 ? TASK_STATE_KILLED
                                                      : TASK_STATE_EXCEPTION);
}

void follow(int task_id, const storage_operation& operation) {
    TaskServiceUpdateTaskState(task_id, TASK_STATE_RUNNING);
    int percent = 0;
    for (int poll = 0; poll < max_polls && !cancelled(task_id); ++poll) {
        percent = operation.progress();
        if (percent < 0 || percent >= 100) break;
        TaskServiceUpdateTaskPercentage(task_id, percent);
        ::usleep(poll_interval_us);
    }
    if (percent >= 100) TaskServiceUpdateTaskPercentage(task_id, 100);
    if (!cancelled(task_id)) end_task(task_id, operation, percent);
}

}  // namespace

int answer_with_task(const storage_operation& operation, const std::function<int()>& start) {
    const std::optional<TaskInfo> task = create_task(operation.task_name, operation.operation);
    if (!task) throw_http_error(500, "Base.1.10.InternalError");
    const int started = start();
    if (started != PLT_OK || !start_task_worker(task->id, [&] { follow(task->id, operation); })) {
        TaskServiceUpdateTaskETime(task->id);
        TaskServiceUpdateTaskState(task->id, TASK_STATE_EXCEPTION);
        if (started != PLT_OK) return started;
        throw_http_error(500, "Base.1.10.InternalError");
    }
    answer_accepted(*task);
    return PLT_OK;
}

}  // namespace odata::redfish
