#include "tasks/submittesteventactioninfo.h"

#include "tasks/event_uris.h"
#include "tasks/submittestevent_parameters.h"
#include "tasks/subscription_vocabulary.h"

namespace odata::redfish {

submittesteventactioninfo::submittesteventactioninfo(request_context& context)
    : common_actioninfo(context, "Submit Test Event Action Info",
                        submit_test_event_actioninfo_uri) {}

const actioninfo_parameters* submittesteventactioninfo::parameters() const {
    static const actioninfo_parameters parameters = {
        {"EventType", false, "String", event_type_names(), {}, {}, {}},
        {"EventId", false, "String", {}, {}, {}, {}},
        {"EventTimestamp", false, "String", {}, {}, {}, {}},
        {"Severity", false, "String", test_event_severities(), {}, {}, {}},
        {"Message", false, "String", {}, {}, {}, {}},
        {"MessageId", false, "String", {}, {}, {}, {}},
        {"MessageArgs", false, "StringArray", {}, {}, {}, {}},
        {"OriginOfCondition", false, "String", {}, {}, {}, {}},
    };
    return &parameters;
}

}  // namespace odata::redfish
