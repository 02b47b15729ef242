#include "resources/managers/log_services.h"

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/exception_http.h"
#include "platform/libipmi.h"
#include "platform/libipmi_sensors.h"
#include "platform/libsel.h"
#include "platform/libweb.h"
#include "resources/managers/action_parameters.h"
#include "resources/managers/manager_uris.h"
#include "resources/managers/redfish_date_time.h"

namespace odata::redfish {
namespace {

constexpr const char* clear_action = "LogService.ClearLog";

}  // namespace

managers_logservicecollection::managers_logservicecollection(request_context& context)
    : redfish(context, "LogServiceCollection", "", "Log Service Collection",
              manager_log_services_uri) {}

int managers_logservicecollection::get(request_context&) {
    set_common_properties();
    set_members({manager_sel_uri});
    return 0;
}

managers_logservices::managers_logservices(request_context& context)
    : redfish(context, "LogService", std::string(schema_file_of("LogService").version),
              "System Event Log Service", manager_sel_uri) {}

int managers_logservices::get(request_context&) {
    set_common_properties();
    set("Description", "The BMC's system event log (SEL)");
    set("ServiceEnabled", true);
    set("OverWritePolicy", "NeverOverWrites");
    set("DateTime", redfish_date_time(lx_time_get()));
    set("DateTimeLocalOffset", "+00:00");
    set("LogEntryType", "SEL");
    set("Status", status_object(SENSOR_HEALTH_OK));
    set("Entries", link(manager_sel_entries_uri));
    set("Actions",
        boost::json::object{{"#LogService.ClearLog", {{"target", manager_sel_clear_target_uri}}}});
    return 0;
}

managers_logservice_clearlog::managers_logservice_clearlog(request_context& context)
    : webservice(context), service_(std::make_shared<managers_logservices>(context)) {}

int managers_logservice_clearlog::post(request_context& context) {
    check_no_parameters(context, clear_action);
    if (LibClearSysEvtLog() != 0) {
        console_log("[ERROR] LogService.ClearLog: the SEL was not cleared\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    service_->answer_success();
    return 0;
}

void managers_logservice_clearlog::send_response() { service_->send_response(); }

}  // namespace odata::redfish
