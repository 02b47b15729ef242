// The URIs of the task service and its tasks.
#pragma once

#include <string>

namespace odata::redfish {

inline constexpr const char* task_service_uri = "/redfish/v1/TaskService";
inline constexpr const char* tasks_uri = "/redfish/v1/TaskService/Tasks";

std::string task_uri(int task_id);
std::string task_monitor_uri(const std::string& monitor_id);

}  // namespace odata::redfish
