#include "framework/event_registry.h"

#include "framework/event_messages.h"
#include "framework/oem_registry.h"

namespace odata::redfish {

boost::json::object event_message_registry() {
    std::vector<message_text> messages;
    for (const event_message& row : event_messages())
        messages.push_back({row.key, row.severity, row.message, row.resolution});
    return message_registry_document(
        "Event.v1_0_0", "This registry defines the messages of the events that the BMC sends",
        messages);
}

}  // namespace odata::redfish
