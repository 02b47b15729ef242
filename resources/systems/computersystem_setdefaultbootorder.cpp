#include "resources/systems/computersystem_setdefaultbootorder.h"

#include <algorithm>
#include <string>
#include <vector>

#include "frontend/exception_http.h"
#include "platform/libbios.h"
#include "platform/libweb.h"
#include "resources/managers/action_parameters.h"
#include "resources/systems/bios_boot_settings.h"

namespace odata::redfish {

computersystem_setdefaultbootorder::computersystem_setdefaultbootorder(request_context& context)
    : webservice(context), system_(std::make_shared<system>(context)) {}

// The BIOS's default order is its options by number (Boot0001 first), the
// order in which it enumerated them. Only the HII daemon takes an order, as
// for a PATCH of BootOrder.
int computersystem_setdefaultbootorder::post(request_context& context) {
    check_no_parameters(context, "SetDefaultBootOrder");
    std::vector<std::string> order = read_bios_boot_options().order;
    if (order.empty() || !isNewHIISupport())
        throw_http_error(400, "Base.1.10.PropertyNotWritable", {"BootOrder"});
    std::sort(order.begin(), order.end());
    order.erase(std::unique(order.begin(), order.end()), order.end());
    std::vector<const char*> names;
    for (const std::string& name : order) names.push_back(name.c_str());
    if (UtilHiiSetBootOrder(names.data(), static_cast<int>(names.size())) != PLT_OK) {
        console_log("[ComputerSystem.SetDefaultBootOrder] the BIOS refused the order\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    system_->answer_success();
    return 0;
}

void computersystem_setdefaultbootorder::send_response() { system_->send_response(); }

}  // namespace odata::redfish
