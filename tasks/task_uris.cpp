#include "tasks/task_uris.h"

namespace odata::redfish {

std::string task_uri(int task_id) { return std::string(tasks_uri) + "/" + std::to_string(task_id); }

std::string task_monitor_uri(const std::string& monitor_id) {
    return "/redfish/v1/TaskMonitor/" + monitor_id;
}

}  // namespace odata::redfish
