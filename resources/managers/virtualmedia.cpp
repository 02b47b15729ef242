#include "resources/managers/virtualmedia.h"

#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "platform/libvmedia.h"
#include "platform/libweb.h"
#include "resources/managers/insert_media_request.h"
#include "resources/managers/manager_uris.h"

namespace odata::redfish {
namespace {

boost::json::array media_types(int kind) {
    if (kind == VMEDIA_CD) return boost::json::array({"CD", "DVD"}, answer_storage());
    return boost::json::array({"Floppy", "USBStick"}, answer_storage());
}

// The last segment of the image's path.
std::string image_name(const std::string& image) { return image.substr(image.rfind('/') + 1); }

boost::json::object actions(const std::string& uri) {
    return boost::json::object(
        {{"#VirtualMedia.InsertMedia",
          {{"target", uri + "/Actions/VirtualMedia.InsertMedia"},
           {"@Redfish.ActionInfo", uri + "/InsertMediaActionInfo"}}},
         {"#VirtualMedia.EjectMedia", {{"target", uri + "/Actions/VirtualMedia.EjectMedia"}}}},
        answer_storage());
}

}  // namespace

virtualmediacollection::virtualmediacollection(request_context& context)
    : redfish(context, "VirtualMediaCollection", "", "Virtual Media Collection",
              manager_virtual_media_uri) {}

int virtualmediacollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members;
    for (const media_drive& drive : media_drives()) members.push_back(media_drive_uri(drive));
    set_members(members);
    return 0;
}

virtualmedia::virtualmedia(request_context& context)
    : redfish(context, "VirtualMedia", std::string(schema_file_of("VirtualMedia").version),
              "Virtual Media", manager_virtual_media_uri),
      drive_(find_requested_drive(context)) {
    if (drive_) uri_ = media_drive_uri(*drive_);
}

const media_drive& virtualmedia::drive() const {
    if (!drive_) throw_http(404);
    return *drive_;
}

int virtualmedia::get(request_context&) {
    const media_drive& drive = this->drive();
    St_VMediaState state;
    if (PltVMEDIA_GetState(drive.kind, drive.number, &state) != PLT_OK) {
        console_log("[ERROR] VirtualMedia %s: state unreadable\n", drive.id.c_str());
        throw_http_error(500, "Base.1.10.InternalError");
    }
    const std::string image = state.inserted ? state.image : "";
    set_common_properties();
    set("Description",
        "Virtual " + std::string(drive.kind == VMEDIA_CD ? "CD" : "floppy") + " drive of the BMC");
    set("MediaTypes", media_types(drive.kind));
    set("ConnectedVia", state.inserted ? "URI" : "NotConnected");
    set("Image", state.inserted ? boost::json::value(image) : nullptr);
    set("ImageName", state.inserted ? boost::json::value(image_name(image)) : nullptr);
    set("Inserted", state.inserted != 0);
    set("WriteProtected", state.write_protected != 0);
    set("UserName",
        state.inserted && state.user_name[0] ? boost::json::value(state.user_name) : nullptr);
    set("Password", boost::json::value(nullptr));
    const std::string_view protocol = image_transfer_protocol(image);
    set("TransferProtocolType",
        protocol.empty() ? boost::json::value(nullptr) : boost::json::value(protocol));
    set("TransferMethod", "Stream");
    set("Actions", actions(uri_));
    return 0;
}

}  // namespace odata::redfish
