#include "resources/managers/managerconfig_reset.h"

#include "frontend/exception_http.h"
#include "platform/libbmc.h"
#include "platform/libweb.h"
#include "resources/managers/action_parameters.h"
#include "resources/managers/manager_settings_audit.h"

namespace odata::redfish {

managerconfig_reset::managerconfig_reset(request_context& context)
    : webservice(context), manager_(std::make_shared<manager>(context)) {}

int managerconfig_reset::post(request_context& context) {
    check_no_parameters(context, "TwrManagerConfig.Reset");
    if (PltBMC_ResetConfig() != PLT_OK) {
        console_log("[TwrManagerConfig.Reset] the settings were left as they were\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    log_manager_setting_change(context.user_name, "manager settings reset to defaults");
    manager_->answer_success();
    return 0;
}

void managerconfig_reset::send_response() { manager_->send_response(); }

}  // namespace odata::redfish
