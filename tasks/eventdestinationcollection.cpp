#include "tasks/eventdestinationcollection.h"

#include <iostream>

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "tasks/event_uris.h"
#include "tasks/eventdestination.h"
#include "tasks/subscription_request.h"
#include "tasks/subscription_store.h"

namespace odata::redfish {

eventdestinationcollection::eventdestinationcollection(request_context& context)
    : redfish(context, "EventDestinationCollection", "", "Event Subscriptions Collection",
              subscriptions_uri) {}

int eventdestinationcollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members;
    for (int index = 0; index < ALERT_DEST_COUNT; ++index)
        if (get_config_alter_enable(index) == 1) members.push_back(subscription_uri(index + 1));
    set_members(members);
    return 0;
}

int eventdestinationcollection::post(request_context& context) {
    const boost::json::value body = context.body_json();
    St_AlertDest entry{};
    result_record result = general_error();
    read_subscription_request(request_object(body), true, entry, result);
    if (!result.entries.empty()) throw_http_result(400, result);
    const created_subscription created = store_new_subscription(entry);
    if (created.outcome == created_subscription::limit_exceeded)
        throw_http_error(400, "Base.1.10.EventSubscriptionLimitExceeded");
    if (created.outcome == created_subscription::failed)
        throw_http_error(500, "Base.1.10.InternalError");
    const int id = created.index + 1;
    eventdestination answer(context, id);
    answer.get(context);
    for (const auto& property : answer.value()) set(property.key(), property.value());
    write_status_line(201);
    set_response_header(response_header::location, subscription_uri(id));
    return 0;
}

}  // namespace odata::redfish
