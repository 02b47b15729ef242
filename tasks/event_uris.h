// URIs of the event service and its subscriptions.
#pragma once

#include <string>

namespace odata::redfish {

inline constexpr const char* event_service_uri = "/redfish/v1/EventService";
inline constexpr const char* subscriptions_uri = "/redfish/v1/EventService/Subscriptions";
inline constexpr const char* submit_test_event_uri =
    "/redfish/v1/EventService/Actions/EventService.SubmitTestEvent";
inline constexpr const char* submit_test_event_actioninfo_uri =
    "/redfish/v1/EventService/SubmitTestEventActionInfo";

// Subscription id n is entry n - 1 of the alert-destination table.
inline std::string subscription_uri(int id) {
    return std::string(subscriptions_uri) + "/" + std::to_string(id);
}

}  // namespace odata::redfish
