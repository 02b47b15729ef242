#include "update/waiting_push.h"

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "base/atomic_file.h"
#include "base/bmc_root.h"
#include "base/kill_point.h"
#include "platform/libfwupdate.h"
#include "platform/libtask.h"
#include "update/staged_components.h"

namespace odata::redfish {
namespace {

const std::string& record_file() {
    static platform::fixed_bmc_path path("/tmp/fwupdate_waiting");
    return path.get();
}

bool task_pending(int task_id) {
    TaskInfo task{};
    return TaskServiceGetTaskInfo(task_id, &task) == 0 && task.state == TASK_STATE_PENDING;
}

std::optional<waiting_push> read_record() {
    std::ifstream file(record_file());
    std::string line;
    waiting_push push{0, 0};
    while (std::getline(file, line)) {
        std::sscanf(line.c_str(), "TaskId=%d", &push.task_id);
        std::sscanf(line.c_str(), "Device=%d", &push.device);
    }
    if (push.task_id <= 0 || push.device <= 0) return std::nullopt;
    return push;
}

}  // namespace

bool store_waiting_push(const waiting_push& push) {
    drop_waiting_push(0);
    platform::kill_point("waiting-push");
    return platform::write_file_atomically(record_file(),
                                           "[WaitingPush]\nTaskId=" + std::to_string(push.task_id) +
                                               "\nDevice=" + std::to_string(push.device) + "\n",
                                           0600);
}

void drop_waiting_push(int device) {
    const std::optional<waiting_push> dropped = read_waiting_push();
    if (!dropped || (device != 0 && dropped->device != device)) return;
    TaskServiceUpdateTaskState(dropped->task_id, TASK_STATE_KILLED);
    TaskServiceUpdateTaskETime(dropped->task_id);
    if (const char* image = firmware_staging_file(dropped->device)) ::unlink(image);
    ::unlink(record_file().c_str());
}

std::optional<waiting_push> read_waiting_push() {
    std::optional<waiting_push> push = read_record();
    if (push && !task_pending(push->task_id)) return std::nullopt;
    return push;
}

bool start_waiting_push(const waiting_push& push, const char* action_uri) {
    if (!start_staged_flash(push.task_id, staged_component_of(push.device), action_uri))
        return false;
    ::unlink(record_file().c_str());
    return true;
}

}  // namespace odata::redfish
