#include "tasks/submittestevent_parameters.h"

#include <algorithm>

#include "base/utc_time.h"
#include "framework/property_checks.h"
#include "platform/libipmi.h"
#include "tasks/subscription_vocabulary.h"

namespace odata::redfish {
namespace {

struct text_parameter {
    std::string_view name;
    std::string test_event::*field;
};

const text_parameter text_parameters[] = {
    {"EventType", &test_event::event_type},
    {"EventId", &test_event::event_id},
    {"EventTimestamp", &test_event::event_timestamp},
    {"Severity", &test_event::severity},
    {"Message", &test_event::message},
    {"MessageId", &test_event::message_id},
    {"OriginOfCondition", &test_event::origin_of_condition},
};

void read_message_args(const request_member& member, test_event& event, result_record& result) {
    const boost::json::array* args = member.value.if_array();
    if (!args) {
        add_value_message(result, "Base.1.10.PropertyValueTypeError", shown_value(member.value),
                          member.path);
        return;
    }
    for (const boost::json::value& arg : *args) {
        const boost::json::string* text = require_text(arg, member.path, result);
        if (text && require_storable(*text, member.path, result))
            event.message_args.emplace_back(*text);
    }
}

template <class names>
void require_listed(const std::string& value, const names& allowed, const std::string& path,
                    result_record& result) {
    if (std::find(allowed.begin(), allowed.end(), value) == allowed.end())
        add_value_message(result, "Base.1.10.PropertyValueNotInList", value, path);
}

void check_choices(const test_event& event, result_record& result) {
    require_listed(event.severity, test_event_severities(), "Severity", result);
    require_listed(event.event_type, event_type_names(), "EventType", result);
}

}  // namespace

const std::vector<std::string_view>& test_event_severities() {
    static const std::vector<std::string_view> severities = {"Information", "Warning", "Critical"};
    return severities;
}

test_event read_test_event(const boost::json::object& parameters, result_record& result) {
    test_event event;
    const long long now = lx_time_get();
    event.event_id = "TestEvent-" + std::to_string(now);
    event.event_timestamp = platform::utc_timestamp(now);
    for (const auto& [name, value] : parameters) {
        const request_member member{std::string(name), value, std::string(name)};
        if (member.name == "MessageArgs") {
            read_message_args(member, event, result);
            continue;
        }
        auto parameter = std::find_if(std::begin(text_parameters), std::end(text_parameters),
                                      [&](const text_parameter& p) { return p.name == name; });
        if (parameter == std::end(text_parameters)) {
            add_message(result, "Base.1.10.ActionParameterNotSupported",
                        {member.name, submit_test_event_action}, {"/" + member.path});
            continue;
        }
        const boost::json::string* text = require_text(value, member.path, result);
        if (text && require_storable(*text, member.path, result))
            event.*(parameter->field) = std::string(*text);
    }
    check_choices(event, result);
    return event;
}

}  // namespace odata::redfish
