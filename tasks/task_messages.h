// The messages of a task record as Redfish message entries.
#pragma once

#include <boost/json.hpp>

#include "platform/libtask.h"

namespace odata::redfish {

boost::json::array task_messages(const TaskInfo& task);

// The text of the task's latest message; "" when it has none.
std::string latest_task_message(const TaskInfo& task);

}  // namespace odata::redfish
