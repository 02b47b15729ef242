#include "update/upload.h"

#include <cstdio>

#include "base/atomic_file.h"
#include "base/bmc_root.h"
#include "base/kill_point.h"
#include "frontend/exception_http.h"
#include "platform/libfwupdate.h"
#include "platform/libtask.h"
#include "platform/libweb.h"
#include "tasks/accepted_response.h"
#include "update/firmware_update_checks.h"
#include "update/multipart_reader.h"
#include "update/push_form.h"
#include "update/push_parameters.h"
#include "update/staged_components.h"
#include "update/update_uris.h"
#include "update/waiting_push.h"

namespace odata::redfish {
namespace {

constexpr size_t max_parameters_length = 65536;

push_parameters read_parameters(multipart_reader& reader) {
    std::string text;
    const bool read = next_part_is(reader, "UpdateParameters") &&
                      reader.read_content([&text](const char* data, size_t length) {
                          text.append(data, length);
                          return text.size() <= max_parameters_length;
                      });
    if (!read) throw_push_error(parse_failure_line, parse_failure_text);
    push_parameters parameters;
    result_record result = push_errors();
    read_push_parameters(text, parameters, result);
    if (!result.entries.empty()) throw_http_result(400, result);
    return parameters;
}

[[noreturn]] void throw_not_staged(const char* console_line, const char* text) {
    release_fw_updating_lock();
    throw_push_error(console_line, text);
}

// The task that was to hold the image ends with the refusal.
[[noreturn]] void throw_task_not_staged(const TaskInfo& task) {
    TaskServiceUpdateTaskState(task.id, TASK_STATE_EXCEPTION);
    throw_not_staged("", "Upload file error.");
}

// The task store failed us, not the client; create_task logged it.
[[noreturn]] void throw_no_task() {
    release_fw_updating_lock();
    throw_push_error("", "Create task service error.", 500);
}

// Streams the UpdateFile part into an image of the component, put in place
// only once whole: a refused push leaves the staged image and any push that
// waits with it as they were.
void stage_image(multipart_reader& reader, const staged_component& component) {
    if (!next_part_is(reader, "UpdateFile"))
        throw_not_staged(parse_failure_line, parse_failure_text);
    if (!receive_image(reader, component, [&component] { drop_waiting_push(component.device); }))
        throw_not_staged("[ERROR] HttpPushUri upload file\n", "Upload file error.");
}

// A BIOS image that waits for the next host reset: a Pending task whose
// cancelling drops it, holding the firmware-update lock without a process.
// The task takes the lock before the staging is recorded and goes Pending
// last: killed on the way, the task ends, which frees the lock and voids
// the staging.
[[noreturn]] void stage_for_reset() {
    const std::optional<TaskInfo> task = create_task("BIOS Update", "BiosUpdate");
    if (!task) throw_no_task();
    if (set_fw_updating_lock_task(task->id) != 0 || StageBiosUpdateOnReset(task->id) != 0)
        throw_task_not_staged(*task);
    platform::kill_point("reset-staged");
    if (TaskServiceUpdateTaskState(task->id, TASK_STATE_PENDING) != 0) {
        DropBiosUpdateOnReset(task->id);
        throw_task_not_staged(*task);
    }
    throw_http_error(400, "TWR.1.0.OemBiosUploadFail");
}

// An image that waits for UpdateService.StartUpdate: a Pending task, and
// the lock free meanwhile.
void stage_for_start_request(const staged_component& component) {
    const std::optional<TaskInfo> task = create_task(component.task_name, "HttpPushUri");
    if (!task) throw_no_task();
    if (!store_waiting_push({task->id, component.device}) ||
        TaskServiceUpdateTaskState(task->id, TASK_STATE_PENDING) != 0)
        throw_task_not_staged(*task);
    release_fw_updating_lock();
    answer_accepted(*task);
}

// Flashes the staged image in a task.
void start_flash(const staged_component& component) {
    const std::optional<TaskInfo> task = create_task(component.task_name, "HttpPushUri");
    if (!task) throw_no_task();
    if (!start_staged_flash(task->id, component, http_push_uri)) {
        TaskServiceUpdateTaskState(task->id, TASK_STATE_EXCEPTION);
        throw_no_task();
    }
    answer_accepted(*task);
}

}  // namespace

int upload::post(request_context& context) {
    check_no_evidence_dump();
    multipart_reader reader = open_push_form(context);
    const push_parameters parameters = read_parameters(reader);
    const staged_component& component = staged_component_of(parameters.device);
    // An image that waits is written, and checked, later.
    if (component.device == FW_DEVICE_BIOS && parameters.apply_time == push_apply_time::immediate)
        check_bios_host_off("TWR.1.0.OemHttppushuriErrorMessage", "OemHttpPushUriErrors");
    take_firmware_update_lock(component.name);
    stage_image(reader, component);
    record_staged_version(component);
    if (parameters.apply_time == push_apply_time::on_reset) stage_for_reset();
    if (parameters.apply_time == push_apply_time::on_start_update)
        stage_for_start_request(component);
    else
        start_flash(component);
    return 0;
}

}  // namespace odata::redfish
