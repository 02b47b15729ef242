#include "update/twrfirmwareinventory_actions.h"

#include "frontend/response_headers.h"
#include "frontend/result_writer.h"
#include "tasks/accepted_response.h"
#include "update/update_mode_actions.h"

namespace odata::redfish {
namespace {

// The path ends in "<member>/Actions/TwrFirmwareInventory.<action>".
constexpr size_t member_from_end = 2;

void answer_success() {
    write_status_line(200);
    write_result({"Success", "Successfully Completed Request.", {}});
}

}  // namespace

int twrfirmwareinventory_enterupdatemode::post(request_context& context) {
    const staged_component& component = inventory_component(context, member_from_end);
    check_no_parameters(context, "EnterUpdateMode");
    answer_accepted(enter_update_mode(component));
    return 0;
}

int twrfirmwareinventory_upload::post(request_context& context) {
    upload_staged_image(context, inventory_component(context, member_from_end));
    answer_success();
    return 0;
}

int twrfirmwareinventory_update::post(request_context& context) {
    const staged_component& component = inventory_component(context, member_from_end);
    check_no_parameters(context, "Update");
    answer_accepted(start_staged_update(component, context.uri.c_str()));
    return 0;
}

int twrfirmwareinventory_cancel::post(request_context& context) {
    const staged_component& component = inventory_component(context, member_from_end);
    check_no_parameters(context, "Cancel");
    cancel_update_mode(component);
    answer_success();
    return 0;
}

}  // namespace odata::redfish
