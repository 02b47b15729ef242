#include "resources/managers/log_services.h"

#include "base/utc_time.h"
#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "platform/libipmi.h"
#include "platform/libipmi_sensors.h"
#include "platform/libsel.h"
#include "platform/libweb.h"
#include "resources/managers/action_parameters.h"
#include "resources/systems/crashdump_uris.h"

namespace odata::redfish {
namespace {

constexpr const char* clear_action = "LogService.ClearLog";
constexpr const char* acknowledge_action = "ClearAcknowledgements";
constexpr int event_log_cleared = 151;

// The health of the alerts nobody has acknowledged: Warning or Critical
// until acknowledged.
int alert_health() {
    switch (LibGetSysEvtLogAlertState()) {
        case SEL_ALERTS_NONE:
            return SENSOR_HEALTH_OK;
        case SEL_ALERTS_WARNING:
            return SENSOR_HEALTH_WARNING;
        case SEL_ALERTS_CRITICAL:
            return SENSOR_HEALTH_CRITICAL;
    }
    console_log("[ERROR] LogService: the SEL's alert state is unreadable\n");
    return SENSOR_HEALTH_UNAVAILABLE;
}

}  // namespace

sel_log_service_collection::sel_log_service_collection(request_context& context,
                                                       const sel_log_place& place)
    : redfish(context, "LogServiceCollection", "", "Log Service Collection", place.services_uri),
      place_(place) {}

int sel_log_service_collection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members{place_.service_uri};
    // The host's crash dumps are a log of the system's, while it has them.
    if (&place_ == &system_sel_log && is_ACD_crashdump_supported())
        members.emplace_back(crashdump_service_uri);
    set_members(members);
    return 0;
}

sel_log_service::sel_log_service(request_context& context, const sel_log_place& place)
    : redfish(context, "LogService", std::string(schema_file_of("LogService").version),
              "System Event Log Service", place.service_uri),
      place_(place) {}

int sel_log_service::get(request_context&) {
    set_common_properties();
    set("Description", place_.description);
    set("ServiceEnabled", true);
    set("OverWritePolicy", "NeverOverWrites");
    set("DateTime", platform::utc_timestamp(lx_time_get()));
    set("DateTimeLocalOffset", "+00:00");
    set("LogEntryType", "SEL");
    set("Status", status_object(place_.shows_alerts ? alert_health() : SENSOR_HEALTH_OK));
    set("Entries", link(sel_entries_uri(place_)));
    boost::json::object actions(
        {{"#LogService.ClearLog", {{"target", sel_clear_target_uri(place_)}}}}, answer_storage());
    if (place_.shows_alerts)
        actions["Oem"] = {{"#TwrLogService.ClearAcknowledgements",
                           {{"target", sel_clear_acknowledgements_target_uri(place_)}}}};
    set("Actions", std::move(actions));
    return 0;
}

sel_log_action::sel_log_action(request_context& context, const sel_log_place& place)
    : webservice(context), service_(std::make_shared<sel_log_service>(context, place)) {}

void sel_log_action::send_response() { service_->send_response(); }

int sel_log_clear::post(request_context& context) {
    check_no_parameters(context, clear_action);
    if (LibClearSysEvtLog() != 0) {
        console_log("[ERROR] LogService.ClearLog: the SEL was not cleared\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    // The emptied log starts with who emptied it; its time is the record's.
    const std::string record = context.user_name + ", cleared the event log";
    LibSaveSysEvtLog(event_log_cleared, 0, record.c_str());
    service_->answer_success();
    return 0;
}

int sel_alerts_acknowledge::post(request_context& context) {
    check_no_parameters(context, acknowledge_action);
    if (LibAckSysEvtLogAlerts() != 0) {
        console_log("[ERROR] LogService.ClearAcknowledgements: the alerts were not acknowledged\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    service_->answer_success();
    return 0;
}

}  // namespace odata::redfish
