#include "tasks/dump_job.h"

#include <string>

#include "frontend/exception_http.h"
#include "platform/libdump.h"
#include "platform/libtask.h"
#include "platform/libweb.h"
#include "platform/plt_result.h"
#include "tasks/accepted_response.h"
#include "tasks/task_worker.h"

namespace odata::redfish {
namespace {

constexpr int generated_percent = 100;

constexpr const char* generating_message = "TWR.1.0.OemEvidenceDumpErrorMessage";

void log_generating(const char* operation) {
    console_log("[ERROR] %s: a dump of this kind is being generated\n", operation);
}

// A task cancelled meanwhile keeps its end.
bool cancelled(int task_id) {
    TaskInfo task{};
    return TaskServiceGetTaskInfo(task_id, &task) == 0 && task.state == TASK_STATE_KILLED;
}

std::string outcome(int kind, const std::string& task_name, bool generated, const char* reason) {
    DumpInfo info{};
    if (!generated) return task_name + ": " + reason;
    if (DumpGetInfo(kind, &info) != PLT_OK) return task_name + ": the dump is ready";
    return task_name + ": the dump " + info.file_name + " is ready (" + std::to_string(info.size) +
           " bytes)";
}

void end_task(int kind, int task_id, const std::string& task_name, bool generated,
              const char* reason) {
    TaskMessage message{};
    TaskServiceEventMessage(generated ? "DumpGenerated" : "DumpFailed",
                            outcome(kind, task_name, generated, reason).c_str(), &message);
    if (generated) TaskServiceUpdateTaskPercentage(task_id, generated_percent);
    TaskServiceAddTaskMessage(task_id, &message);
    TaskServiceUpdateTaskETime(task_id);
    TaskServiceUpdateTaskState(task_id, generated ? TASK_STATE_COMPLETED : TASK_STATE_EXCEPTION);
}

void run_dump_job(int kind, int task_id, const std::string& task_name) {
    TaskServiceUpdateTaskState(task_id, TASK_STATE_RUNNING);
    char reason[DUMP_REASON_MAX + 1] = {};
    const bool generated = DumpGenerate(kind, task_id, reason, sizeof reason) == PLT_OK;
    if (cancelled(task_id)) return;
    end_task(kind, task_id, task_name, generated, reason);
    console_log("[Dump] task %d: %s\n", task_id, generated ? "completed" : reason);
}

// A task that never started ends at once, so that no client waits on it.
[[noreturn]] void abandon(int task_id, int status, const char* message_id) {
    TaskServiceUpdateTaskETime(task_id);
    TaskServiceUpdateTaskState(task_id, TASK_STATE_EXCEPTION);
    throw_http_error(status, message_id);
}

}  // namespace

void start_dump_task(int kind, const char* task_name, const char* operation) {
    if (DumpIsGenerating(kind)) {
        log_generating(operation);
        throw_http_error(503, generating_message);
    }
    const std::optional<TaskInfo> task = create_task(task_name, operation);
    if (!task) throw_http_error(500, "Base.1.10.InternalError");
    const int claimed = DumpClaimGeneration(kind, task->id);
    if (claimed == PLT_ERR_STATE) {
        log_generating(operation);
        abandon(task->id, 503, generating_message);
    }
    if (claimed != PLT_OK) abandon(task->id, 500, "Base.1.10.InternalError");
    const int task_id = task->id;
    const std::string name = task_name;
    if (TaskServiceUpdateTaskState(task_id, TASK_STATE_STARTING) != 0 ||
        !start_task_worker(task_id, [=] { run_dump_job(kind, task_id, name); }))
        abandon(task_id, 500, "Base.1.10.InternalError");
    answer_accepted(*task);
}

}  // namespace odata::redfish
