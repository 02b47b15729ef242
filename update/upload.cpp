#include "update/upload.h"

#include <charconv>
#include <cstdio>

#include "base/atomic_file.h"
#include "base/bmc_root.h"
#include "base/kill_point.h"
#include "frontend/exception_http.h"
#include "platform/libfwupdate.h"
#include "platform/libtask.h"
#include "platform/libweb.h"
#include "tasks/accepted_response.h"
#include "update/firmware_components.h"
#include "update/firmware_update_checks.h"
#include "update/form_parts.h"
#include "update/image_download.h"
#include "update/image_file.h"
#include "update/multipart_reader.h"
#include "update/push_parameters.h"
#include "update/staged_components.h"
#include "update/update_uris.h"
#include "update/waiting_push.h"

namespace odata::redfish {
namespace {

// An image and the form around it.
constexpr long long max_content_length = max_image_bytes + (1LL << 20);
constexpr size_t max_boundary_length = 128;
constexpr size_t max_parameters_length = 65536;
constexpr const char* parsing_content_text = "Please check the parsing content.";

[[noreturn]] void throw_push_error(const char* console_line, const char* text, int status = 400) {
    console_log("%s", console_line);
    result_record result = push_errors();
    add_push_error(result, text);
    throw_http_result(status, result);
}

long long checked_content_length() {
    const std::string text = request_cgi_text("CONTENT_LENGTH");
    long long length = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || length <= 0)
        throw_push_error("[ERROR] HttpPushUri Http content length.\n", parsing_content_text);
    if (length > max_content_length)
        throw_push_error("[ERROR] HttpPushUri Content length is too long.\n", parsing_content_text);
    return length;
}

std::string checked_boundary() {
    const std::string type = request_cgi_text("CONTENT_TYPE");
    if (type.rfind("multipart/form-data", 0) != 0)
        throw_push_error("[ERROR] HttpPushUri Incorrect http content type.\n",
                         parsing_content_text);
    const std::string boundary = multipart_boundary(type);
    if (boundary.empty())
        throw_push_error("[ERROR] HttpPushUri Http boundary.\n", parsing_content_text);
    if (boundary.size() > max_boundary_length)
        throw_push_error("[ERROR] HttpPushUri Http boundary out of length.\n",
                         parsing_content_text);
    return boundary;
}

constexpr const char* parse_failure_line = "[ERROR] HttpPushUri Multipart is parsing failed.\n";
constexpr const char* parse_failure_text = "Please check the parsing name.";

bool next_part_is(multipart_reader& reader, const char* name) {
    return reader.next_part() && reader.name() == name;
}

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
    image_file file(firmware_staging_file(component.device));
    const bool received = file.valid() &&
                          reader.read_content([&file](const char* data, size_t length) {
                              return file.write(data, length);
                          }) &&
                          file.size() > 0;
    if (!received) throw_not_staged("[ERROR] HttpPushUri upload file\n", "Upload file error.");
    drop_waiting_push(component.device);
    if (!file.commit()) throw_not_staged("[ERROR] HttpPushUri upload file\n", "Upload file error.");
}

void record_staged_version(const staged_component& component) {
    char version[64] = {};
    if (GetFirmwareImageVersion(component.device, firmware_staging_file(component.device), version,
                                sizeof version) != 0)
        std::snprintf(version, sizeof version, "%s", "Unknown");
    store_staged_version(component.inventory_entry, version);
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
    const long long length = checked_content_length();
    const std::string boundary = checked_boundary();
    if (!context.upload) throw_http_error(500, "Base.1.10.InternalError");
    multipart_reader reader(*context.upload, boundary, length);
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
