#include "resources/managers/manager_settings_audit.h"

#include "platform/libipmi.h"

namespace odata::redfish {
namespace {

constexpr int event_manager_setting_change = 155;

}  // namespace

void log_manager_setting_change(const std::string& user_name, std::string_view what) {
    const std::string text = user_name + ", " + std::string(what);
    LibSaveSysEvtLog(event_manager_setting_change, 0, text.c_str());
}

}  // namespace odata::redfish
