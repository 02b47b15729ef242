#include "update/update_mode_actions.h"

#include <unistd.h>

#include <boost/json.hpp>
#include <cstring>

#include "base/kill_point.h"
#include "frontend/exception_http.h"
#include "platform/libfwupdate.h"
#include "platform/libweb.h"
#include "tasks/accepted_response.h"
#include "update/firmware_components.h"
#include "update/firmware_update_checks.h"
#include "update/push_form.h"

namespace odata::redfish {
namespace {

[[noreturn]] void throw_refused(const std::string& text) {
    result_record result = general_error();
    add_message(result, "TWR.1.0.OemHttppushuriErrorMessage", {text});
    throw_http_result(400, result);
}

// The Pending task that holds the component's update mode.
TaskInfo update_mode_task(const staged_component& component) {
    char held[64] = {};
    int task_id = 0;
    TaskInfo task{};
    if (!fw_update_mode_held(held, sizeof held, &task_id) ||
        std::strcmp(held, component.name) != 0 || task_id == 0 ||
        TaskServiceGetTaskInfo(task_id, &task) != 0)
        throw_refused(std::string("The ") + component.name + " firmware is not in update mode");
    if (task.state != TASK_STATE_PENDING)
        throw_http_error(400, "TWR.1.0.OemFirmwareAlreadyInUpdateMode", {component.name});
    return task;
}

void drop_staged_image(const staged_component& component) {
    ::unlink(firmware_staging_file(component.device));
    store_staged_version(component.inventory_entry, "");
}

bool image_staged(const staged_component& component) {
    return ::access(firmware_staging_file(component.device), F_OK) == 0;
}

// Ends a task that could not be made to hold update mode, and frees what it
// took.
[[noreturn]] void throw_not_entered(const TaskInfo& task, const staged_component& component) {
    if (component.update_mode_failure)
        console_log(component.update_mode_failure, __func__, __LINE__);
    TaskServiceUpdateTaskState(task.id, TASK_STATE_EXCEPTION);
    leave_fw_update_mode(task.id);
    release_fw_updating_lock();
    throw_http_error(500, "Base.1.10.InternalError");
}

}  // namespace

const staged_component& inventory_component(const request_context& context,
                                            size_t segments_from_end) {
    const std::optional<std::string_view> segment = context.segment_from_end(segments_from_end);
    if (!segment) throw_http(404);
    const std::optional<firmware_component> found =
        find_oem_firmware_component(std::string(*segment));
    if (!found) throw_http(404);
    return staged_component_of(found->device);
}

void check_no_parameters(const request_context& context, const char* action) {
    const std::optional<std::string_view> body = context.body();
    if (!body || body->empty()) return;
    const boost::json::value parsed = context.body_json();
    if (!parsed.is_object()) throw_http_error(400, "Base.1.10.UnrecognizedRequestBody");
    result_record result = general_error();
    for (const auto& member : parsed.as_object())
        add_message(result, "Base.1.10.ActionParameterUnknown",
                    {action, std::string(member.key())});
    if (!result.entries.empty()) throw_http_result(400, result);
}

TaskInfo enter_update_mode(const staged_component& component) {
    check_no_evidence_dump();
    take_firmware_update_lock(component.name);
    const std::optional<TaskInfo> task = create_task(component.task_name, "EnterUpdateMode");
    if (!task) {
        release_fw_updating_lock();
        throw_http_error(500, "Base.1.10.InternalError");
    }
    // The task holds the lock and update mode before it goes Pending:
    // killed on the way, it ends, and neither holds anything back.
    if (set_fw_updating_lock_task(task->id) != 0 ||
        enter_fw_update_mode(task->id, component.name) != 0)
        throw_not_entered(*task, component);
    platform::kill_point("update-mode");
    if (TaskServiceUpdateTaskState(task->id, TASK_STATE_PENDING) != 0)
        throw_not_entered(*task, component);
    // It waits without a process from now on: once it is deleted, it holds
    // nothing back.
    TaskServiceSetTaskWorker(task->id, 0);
    return *task;
}

void upload_staged_image(const request_context& context, const staged_component& component) {
    update_mode_task(component);
    multipart_reader reader = open_push_form(context);
    if (!next_part_is(reader, "UpdateFile"))
        throw_push_error(parse_failure_line, parse_failure_text);
    if (!receive_image(reader, component, [] {}))
        throw_push_error("[ERROR] HttpPushUri upload file\n", "Upload file error.");
    // An image that is not one for the component is not kept: nothing is
    // staged then.
    char version[64] = {};
    if (GetFirmwareImageVersion(component.device, firmware_staging_file(component.device), version,
                                sizeof version) != 0) {
        drop_staged_image(component);
        throw_push_error("[ERROR] HttpPushUri upload file\n", "Upload file error.");
    }
    store_staged_version(component.inventory_entry, version);
}

TaskInfo start_staged_update(const staged_component& component, const char* action_uri) {
    const TaskInfo task = update_mode_task(component);
    if (!image_staged(component))
        throw_refused(std::string("No image was uploaded for the ") + component.name + " firmware");
    if (component.device == FW_DEVICE_BIOS)
        check_bios_host_off("TWR.1.0.OemHttppushuriErrorMessage", general_error().code.c_str());
    if (!start_staged_flash(task.id, component, action_uri))
        throw_http_error(500, "Base.1.10.InternalError");
    return task;
}

void cancel_update_mode(const staged_component& component) {
    const TaskInfo task = update_mode_task(component);
    drop_staged_image(component);
    TaskServiceUpdateTaskState(task.id, TASK_STATE_KILLED);
    TaskServiceUpdateTaskETime(task.id);
    leave_fw_update_mode(task.id);
    release_fw_updating_lock();
}

}  // namespace odata::redfish
