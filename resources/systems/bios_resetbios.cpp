#include "resources/systems/bios_resetbios.h"

#include "frontend/exception_http.h"
#include "platform/libweb.h"
#include "resources/managers/action_parameters.h"
#include "resources/systems/bios_attributes.h"

namespace odata::redfish {

bios_resetbios::bios_resetbios(request_context& context)
    : webservice(context), bios_(std::make_shared<bios>(context)) {}

// Every writable attribute's default becomes a pending change, so changes
// made after the reset still apply on top of it.
int bios_resetbios::post(request_context& context) {
    check_no_parameters(context, "ResetBios");
    if (!add_pending_bios_attributes(default_bios_attributes())) {
        console_log("[Bios.ResetBios] the defaults were not handed to the BIOS\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    bios_->answer_success();
    return 0;
}

void bios_resetbios::send_response() { bios_->send_response(); }

}  // namespace odata::redfish
