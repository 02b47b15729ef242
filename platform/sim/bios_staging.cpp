#include "platform/sim/bios_staging.h"

#include <unistd.h>

#include <cstdio>
#include <string>

#include "base/atomic_file.h"
#include "base/bmc_root.h"
#include "platform/libfwupdate.h"
#include "platform/libipmi.h"
#include "platform/libtask.h"
#include "platform/sim/firmware_image.h"
#include "platform/sim/firmware_state.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"
#include "platform/sim/task_store.h"

namespace platform::sim {
namespace {

const std::string& task_record() {
    static fixed_bmc_path path("/nv/pending_task.ini");
    return path.get();
}
const std::string& reset_marker() {
    static fixed_bmc_path path("/nv/OnReset_Update");
    return path.get();
}
const std::string& bios_image() {
    static fixed_bmc_path path("/tmp/bios_rom");
    return path.get();
}

struct staged_task {
    int id = 0;
    std::string monitor_id;
};

staged_task read_staged_task() {
    std::string text;
    staged_task task;
    if (!read_file(task_record(), text)) return task;
    char monitor_id[TASK_MONITOR_ID_MAX + 1] = {};
    if (std::sscanf(text.c_str(), "[PendingTask]\nTaskId=%d\nMonitorId=%32s", &task.id,
                    monitor_id) == 2)
        task.monitor_id = monitor_id;
    return task;
}

void remove_staging() {
    ::unlink(reset_marker().c_str());
    ::unlink(task_record().c_str());
    ::unlink(bios_image().c_str());
}

// As the update service's records of an update, with the apply time in
// place of the action.
constexpr int event_firmware_update = 152;

void end_staged_task(int task_id, bool written, const std::string& detail) {
    const std::string outcome =
        "BIOS, OnReset, " + detail + (written ? ", successfully" : ", unsuccessfully");
    LibSaveSysEvtLog(event_firmware_update, 0, outcome.c_str());
    TaskMessage message{};
    TaskServiceEventMessage(written ? "FirmwareUpdateCompleted" : "FirmwareUpdateFailed",
                            outcome.c_str(), &message);
    if (written) TaskServiceUpdateTaskPercentage(task_id, 100);
    TaskServiceAddTaskMessage(task_id, &message);
    TaskServiceUpdateTaskETime(task_id);
    TaskServiceUpdateTaskState(task_id, written ? TASK_STATE_COMPLETED : TASK_STATE_EXCEPTION);
}

// The BIOS agent writes the staged image as the host starts.
void write_staged_image(const staged_task& task) {
    firmware_image_header header;
    std::string reason;
    const bool written = check_firmware_image(bios_image(), "BIOS", header, reason) &&
                         store_firmware_version(FW_DEVICE_BIOS, header.version);
    if (written) reason = "the new firmware is running";
    if (reason.empty()) reason = "the new version cannot be recorded";
    end_staged_task(task.id, written, reason);
}

}  // namespace

void apply_bios_staged_for_reset() {
    with_file_lock(task_record(), [] {
        const staged_task task = read_staged_task();
        if (task.id == 0 || ::access(reset_marker().c_str(), F_OK) != 0) return true;
        const bool waiting = task_in_progress(task.id, task.monitor_id);
        if (waiting) write_staged_image(task);
        remove_staging();
        // The lock was the waiting task's; a void staging's task has freed
        // it already.
        if (waiting) release_fw_updating_lock();
        return true;
    });
}

void drop_void_bios_staging() {
    const staged_task task = read_staged_task();
    if (task.id != 0 && !task_in_progress(task.id, task.monitor_id)) remove_staging();
}

}  // namespace platform::sim

using namespace platform::sim;

extern "C" {

int StageBiosUpdateOnReset(int task_id) {
    TaskInfo task{};
    if (TaskServiceGetTaskInfo(task_id, &task) != 0) return -1;
    const std::string text = "[PendingTask]\nTaskId=" + std::to_string(task_id) +
                             "\nMonitorId=" + task.monitor_id + "\n";
    platform::staged_files records;
    const bool staged = records.stage(task_record(), text, 0600) &&
                        records.stage(reset_marker(), "", 0600) && records.commit();
    return staged ? 0 : -1;
}

int DropBiosUpdateOnReset(int task_id) {
    if (task_id <= 0 || read_staged_task().id != task_id) return -1;
    remove_staging();
    return 0;
}

}  // extern "C"
