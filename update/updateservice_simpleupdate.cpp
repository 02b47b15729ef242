#include "update/updateservice_simpleupdate.h"

#include <unistd.h>

#include "base/bmc_root.h"
#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "platform/libfwupdate.h"
#include "platform/libweb.h"
#include "tasks/accepted_response.h"
#include "update/firmware_update_checks.h"
#include "update/image_download.h"
#include "update/simpleupdate_request.h"
#include "update/update_job.h"
#include "update/update_uris.h"
#include "update/waiting_push.h"

namespace odata::redfish {
namespace {

constexpr const char* error_message = "TWR.1.0.OemSimpleupdateErrorMessage";

// The location without a user part ("user:password@"), which may hold a
// password.
std::string loggable_location(const boost::json::value* uri) {
    if (!uri || !uri->is_string()) return {};
    std::string location(uri->as_string());
    const size_t host = location.find("://") == std::string::npos ? 0 : location.find("://") + 3;
    const size_t user_end = location.find('@', host);
    if (user_end != std::string::npos && user_end < location.find('/', host))
        location.replace(host, user_end + 1 - host, "******@");
    return location;
}

void log_request(const boost::json::object& body) {
    const boost::json::value* protocol = body.if_contains("TransferProtocol");
    console_log("%s, %d, simpleupdate ImageURI = %s, TransferProtocol = %s\n", __FILE__, __LINE__,
                loggable_location(body.if_contains("ImageURI")).c_str(),
                protocol && protocol->is_string() ? protocol->as_string().c_str() : "");
}

// Downloads the image, then flashes it.
update_job download_job(int task_id, const simple_update_request& request) {
    const std::string image = platform::bmc_path("/tmp/fwimgbuff");
    const image_source source{request.url(), request.username, request.password};
    return {task_id, request.device, simple_update_uri, image, [=](std::string& reason) {
                ::unlink(platform::bmc_path("/tmp/bios_rom").c_str());
                return download_image(
                    source, image, [=] { return update_cancelled(task_id); }, reason);
            }};
}

[[noreturn]] void throw_not_started(const char* text) {
    release_fw_updating_lock();
    result_record result = simple_update_errors();
    add_message(result, error_message, {text});
    throw_http_result(500, result);
}

}  // namespace

int updateservice_simpleupdate::post(request_context& context) {
    const boost::json::value body = context.body_json();
    const boost::json::object& parameters = request_object(body);
    log_request(parameters);
    check_no_evidence_dump();
    simple_update_request request;
    result_record result = simple_update_errors();
    read_simple_update(parameters, request, result);
    if (!result.entries.empty()) throw_http_result(400, result);
    const bool bios = request.device == FW_DEVICE_BIOS;
    if (bios) check_bios_host_off(error_message, result.code.c_str());
    take_firmware_update_lock(bios ? "BIOS" : "BMC");

    const std::optional<TaskInfo> task = create_task("Simple Update", "SimpleUpdate");
    if (!task) throw_not_started("Create task service error.");
    // The download takes the place of any pushed image.
    drop_waiting_push(0);
    if (!start_update_worker(download_job(task->id, request))) {
        TaskServiceUpdateTaskState(task->id, TASK_STATE_EXCEPTION);
        throw_not_started("Create task service error.");
    }
    answer_accepted(*task);
    return 0;
}

}  // namespace odata::redfish
