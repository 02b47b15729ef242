#include "resources/chassis/power_controls.h"

#include <string>

#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/exception_http.h"
#include "platform/libipmi_power.h"
#include "platform/libipmi_sensors.h"
#include "platform/libweb.h"
#include "resources/chassis/chassis_uris.h"

namespace odata::redfish {

controlcollection::controlcollection(request_context& context)
    : redfish(context, "ControlCollection", "", "Control Collection", controls_uri) {}

int controlcollection::get(request_context&) {
    set_common_properties();
    set_members({power_limit_control_uri});
    return 0;
}

powerlimitcontrol::powerlimitcontrol(request_context& context)
    : redfish(context, "Control", std::string(schema_file_of("Control").version),
              "System Power Limit", power_limit_control_uri) {}

// A limit of 0 means none is set: the control is disabled and has no set
// point.
int powerlimitcontrol::get(request_context&) {
    St_PowerControl control{};
    if (PltPSU_GetPowerControl(&control) != PLT_OK) {
        console_log("[ERROR] Controls: no power control data\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    set_common_properties();
    set("ControlType", "Power");
    set("ControlMode", control.limit_watts ? "Automatic" : "Disabled");
    set("SetPoint", control.limit_watts ? boost::json::value(control.limit_watts) : nullptr);
    set("SetPointUnits", "W");
    set("AllowableMax", control.capacity_watts);
    set("PhysicalContext", "Chassis");
    set("Status", status_object(SENSOR_HEALTH_OK));
    return 0;
}

}  // namespace odata::redfish
