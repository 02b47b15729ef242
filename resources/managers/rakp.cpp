// TWRRAKP: whether IPMI over LAN sessions must prove their user's key.
#include "frontend/response_headers.h"
#include "platform/liblan.h"
#include "resources/managers/oem_settings.h"
#include "resources/managers/setting_readers.h"

namespace odata::redfish {
namespace {

struct rakp_changes {
    std::optional<bool> enabled;
};

constexpr patch_property<rakp_changes> rakp_properties[] = {
    {"Enabled", read_flag<&rakp_changes::enabled>},
};

}  // namespace

rakp::rakp(request_context& context) : oem_setting(context, "TwrRAKP", "RAKP", "TWRRAKP") {}

int rakp::get(request_context&) {
    const int required = PltIPMI_GetRakpRequired();
    if (required < 0) require_platform_ok(required, "RAKP");
    set_heading("IPMI over LAN authentication through RAKP; off also admits cipher suite 0");
    set("Enabled", required != 0);
    return 0;
}

int rakp::patch(request_context& context) {
    const rakp_changes changes = read_settings_patch(rakp_properties, context.body_json());
    require_platform_ok(PltIPMI_SetRakpRequired(*changes.enabled ? 1 : 0), "RAKP");
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
