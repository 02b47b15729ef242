// Event-log records of changes to the manager's settings: who, and what.
#pragma once

#include <string>
#include <string_view>

namespace odata::redfish {

void log_manager_setting_change(const std::string& user_name, std::string_view what);

}  // namespace odata::redfish
