// The parameters of EventService.SubmitTestEvent, with their defaults and
// allowed values, shared by the action and its ActionInfo.
#pragma once

#include <boost/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/message.h"

namespace odata::redfish {

inline constexpr const char* submit_test_event_action = "SubmitTestEvent";

const std::vector<std::string_view>& test_event_severities();

struct test_event {
    std::string event_type = "Alert";
    std::string event_id;
    std::string event_timestamp;
    std::string severity = "Information";
    std::string message = "Submit Test Event";
    std::string message_id = "TWR.v1.0.TestAlert";
    std::vector<std::string> message_args;
    std::string origin_of_condition = "/redfish/v1/EventService";
};

// The event a request asks for, defaults for what it leaves out; every
// problem adds a message to result.
test_event read_test_event(const boost::json::object& parameters, result_record& result);

}  // namespace odata::redfish
