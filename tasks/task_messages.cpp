#include "tasks/task_messages.h"

#include <cstring>

namespace odata::redfish {
namespace {

// A list of the one text, or an empty list for "".
boost::json::array optional_list(const char* text) {
    boost::json::array list;
    if (text[0] != '\0') list.emplace_back(text);
    return list;
}

}  // namespace

boost::json::array task_messages(const TaskInfo& task) {
    boost::json::array messages;
    for (int index = 0; index < task.message_count && index < TASK_MESSAGES_MAX; ++index) {
        const TaskMessage& message = task.messages[index];
        messages.push_back({{"MessageId", message.message_id},
                            {"Message", message.message},
                            {"MessageArgs", optional_list(message.argument)},
                            {"RelatedProperties", optional_list(message.related)},
                            {"Severity", message.severity}});
    }
    return messages;
}

std::string latest_task_message(const TaskInfo& task) {
    if (task.message_count <= 0 || task.message_count > TASK_MESSAGES_MAX) return {};
    return task.messages[task.message_count - 1].message;
}

}  // namespace odata::redfish
