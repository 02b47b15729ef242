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
    static const kept_setting<long> timeout(settings_file(), "SessionService.SessionTimeout",
                                            default_session_timeout);
    return timeout.get();
}

bool sessionserviceconfig::service_enabled() {
    return settings_file().get<int>("SessionService.ServiceEnabled", 1) != 0;
}

platform::record_lock sessionserviceconfig::lock() { return settings_file().lock(); }

bool sessionserviceconfig::store(long session_timeout, bool service_enabled) {
    return settings_file().update([&](boost::property_tree::ptree& settings) {
        settings.put("SessionService.SessionTimeout", session_timeout);
        settings.put("SessionService.ServiceEnabled", service_enabled ? 1 : 0);
    });
}

}  // namespace odata::redfish
