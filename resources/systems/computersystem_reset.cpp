#include "resources/systems/computersystem_reset.h"

#include <string>

#include "frontend/exception_http.h"
#include "platform/libipmi.h"
#include "platform/libweb.h"
#include "platform/plt_result.h"
#include "resources/systems/oob_update_status.h"
#include "resources/systems/reset_types.h"

namespace odata::redfish {
namespace {

constexpr const char* system_reset_action = "ComputerSystemReset";
constexpr const char* parameter_name = "ResetType";

const reset_type& requested_reset(const boost::json::value& body) {
    const boost::json::object* parameters = body.if_object();
    const boost::json::value* requested =
        parameters ? parameters->if_contains(parameter_name) : nullptr;
    if (!requested)
        throw_http_error(400, "Base.1.10.ActionParameterUnknown",
                         {system_reset_action, parameter_name});
    const boost::json::string* name = requested->if_string();
    const reset_type* reset = name ? find_reset_type(*name) : nullptr;
    if (!reset)
        throw_http_error(400, "Base.1.10.ActionParameterNotSupported",
                         {parameter_name, system_reset_action});
    return *reset;
}

}  // namespace

computersystem_reset::computersystem_reset(request_context& context)
    : webservice(context), system_(std::make_shared<system>(context)) {}

int computersystem_reset::post(request_context& context) {
    const reset_type& reset = requested_reset(context.body_json());
    if (at_p_St_GlobalVar->fw_update_flags & bios_update_mode_flag)
        throw_http_error(400, "TWR.1.0.OemFirmwareAlreadyInUpdateMode", {"BIOS"},
                         {"EnterUpdateMode_StatusCheck"});
    const int result = reset.perform();
    if (result != PLT_OK)
        console_log("[ComputerSystem.Reset] %s: platform result %d\n",
                    std::string(reset.name).c_str(), result);
    system_->answer_success();
    return 0;
}

void computersystem_reset::send_response() { system_->send_response(); }

}  // namespace odata::redfish
