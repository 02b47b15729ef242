#include "tasks/event_alerts.h"

#include <boost/json.hpp>

#include "platform/libweb.h"

namespace json = boost::json;

namespace odata::redfish {
namespace {

std::string text(const char* value) { return value ? value : ""; }

}  // namespace

std::string redfish_event_document(const St_AlertEvent& alert, const std::string& context) {
    json::array args;
    for (int i = 0; alert.message_args && i < alert.message_arg_count; ++i)
        args.emplace_back(text(alert.message_args[i]));
    json::object event{{"EventType", text(alert.event_type)},
                       {"EventId", text(alert.event_id)},
                       {"Severity", text(alert.severity)},
                       {"EventTimestamp", text(alert.timestamp)},
                       {"Message", text(alert.message)},
                       {"MessageId", text(alert.message_id)},
                       {"MessageArgs", std::move(args)},
                       {"OriginOfCondition", {{"@odata.id", text(alert.origin)}}},
                       {"Oem",
                        {{"Tarnwright",
                          {{"EventDirAndType", text(alert.event_dir_and_type)},
                           {"SensorType", text(alert.sensor_type)},
                           {"SensorName", text(alert.sensor_name)}}}}}};
    json::object document{{"@odata.type", "#EventService.v1_5_0.Event"},
                          {"Id", text(alert.event_id)},
                          {"Name", "Event Array"},
                          {"Context", context},
                          {"Events", json::array{std::move(event)}}};
    return json::serialize(document);
}

void send_alert_event(const St_AlertEvent& event,
                      const std::function<bool(const St_AlertDest&)>& receives) {
    for (int index = 0; index < ALERT_DEST_COUNT; ++index) {
        St_AlertDest entry{};
        if (get_config_alert_dest(index, &entry) != 0 || !receives(entry)) continue;
        const std::string document = redfish_event_document(event, entry.context);
        St_AlertEvent addressed = event;
        addressed.document = document.c_str();
        if (SendAlertEvent(index, &addressed) != 0)
            console_log("[Events] entry %d: no delivery started\n", index);
    }
}

}  // namespace odata::redfish
