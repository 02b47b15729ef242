#include "security/session_settings.h"

#include "framework/ini_settings.h"

namespace odata::redfish {
namespace {

const ini_settings& settings_file() {
    static const ini_settings file("/nv/redfish/sessionservice.ini");
    return file;
}

}  // namespace

long sessionserviceconfig::session_timeout() {
    return settings_file().get<long>("SessionService.SessionTimeout", default_session_timeout);
}

bool sessionserviceconfig::service_enabled() {
    return settings_file().get<int>("SessionService.ServiceEnabled", 1) != 0;
}

bool sessionserviceconfig::store(long session_timeout, bool service_enabled) {
    boost::property_tree::ptree settings = settings_file().read();
    settings.put("SessionService.SessionTimeout", session_timeout);
    settings.put("SessionService.ServiceEnabled", service_enabled ? 1 : 0);
    return settings_file().write(settings);
}

}  // namespace odata::redfish
