#include "resources/managers/virtualmedia_actions.h"

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "platform/libvmedia.h"
#include "platform/libweb.h"
#include "resources/managers/action_parameters.h"
#include "resources/managers/insert_media_request.h"

namespace odata::redfish {
namespace {

[[noreturn]] void platform_failure(const char* action, const media_drive& drive, int code) {
    console_log("[%s] %s: platform result %d\n", action, drive.id.c_str(), code);
    throw_http_error(500, "Base.1.10.InternalError");
}

}  // namespace

virtualmedia_insertmedia::virtualmedia_insertmedia(request_context& context)
    : webservice(context), drive_(std::make_shared<virtualmedia>(context)) {}

int virtualmedia_insertmedia::post(request_context& context) {
    const media_drive& drive = drive_->drive();
    const boost::json::value body = context.body_json();
    result_record result = general_error();
    const insert_media_request request = read_insert_media(request_object(body), result);
    if (!result.entries.empty()) throw_http_result(400, result);
    const int code =
        PltVMEDIA_Insert(drive.kind, drive.number, request.image.c_str(), request.write_protected,
                         request.user_name.c_str(), request.password.c_str());
    if (code == PLT_ERR_STATE) throw_http_error(409, "Base.1.10.ResourceInUse");
    if (code != PLT_OK) platform_failure("VirtualMedia.InsertMedia", drive, code);
    drive_->answer_success();
    return 0;
}

void virtualmedia_insertmedia::send_response() { drive_->send_response(); }

virtualmedia_ejectmedia::virtualmedia_ejectmedia(request_context& context)
    : webservice(context), drive_(std::make_shared<virtualmedia>(context)) {}

// Ejecting an empty drive leaves it as asked: that is a success too.
int virtualmedia_ejectmedia::post(request_context& context) {
    const media_drive& drive = drive_->drive();
    check_no_parameters(context, "VirtualMedia.EjectMedia");
    const int code = PltVMEDIA_Eject(drive.kind, drive.number);
    if (code != PLT_OK && code != PLT_ERR_STATE)
        platform_failure("VirtualMedia.EjectMedia", drive, code);
    drive_->answer_success();
    return 0;
}

void virtualmedia_ejectmedia::send_response() { drive_->send_response(); }

insertmediaactioninfo::insertmediaactioninfo(request_context& context)
    : common_actioninfo(context, "Insert Media Action Info", context.uri) {}

int insertmediaactioninfo::get(request_context& context) {
    if (!find_requested_drive(context)) throw_http(404);
    return common_actioninfo::get(context);
}

const actioninfo_parameters* insertmediaactioninfo::parameters() const {
    static const actioninfo_parameters insert_media = {
        {"Image", true, "String", {}, {}, {}, {}},
        {"Inserted", false, "Boolean", {}, {}, {}, {}},
        {"WriteProtected", false, "Boolean", {}, {}, {}, {}},
        {"UserName", false, "String", {}, {}, {}, {}},
        {"Password", false, "String", {}, {}, {}, {}},
        {"TransferProtocolType", false, "String", transfer_protocol_types(), {}, {}, {}},
        {"TransferMethod", false, "String", {"Stream"}, {}, {}, {}},
    };
    return &insert_media;
}

}  // namespace odata::redfish
