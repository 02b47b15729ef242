#include "framework/top_level_services.h"

namespace odata::redfish {

const std::vector<top_level_service>& top_level_services() {
    static const std::vector<top_level_service> table = {
        {"Service", "/redfish/v1", root_link::none},
        {"Systems", "/redfish/v1/Systems", root_link::property},
        {"Chassis", "/redfish/v1/Chassis", root_link::property},
        {"Managers", "/redfish/v1/Managers", root_link::property},
        // The root's "Tasks" is the task service, not its task collection.
        {"Tasks", "/redfish/v1/TaskService", root_link::property},
        {"SessionService", "/redfish/v1/SessionService", root_link::property},
        {"AccountService", "/redfish/v1/AccountService", root_link::property},
        {"EventService", "/redfish/v1/EventService", root_link::property},
        {"Registries", "/redfish/v1/Registries", root_link::property},
        {"JsonSchemas", "/redfish/v1/JsonSchemas", root_link::property},
        {"UpdateService", "/redfish/v1/UpdateService", root_link::property},
        {"CertificateService", "/redfish/v1/CertificateService", root_link::property},
        {"Sessions", "/redfish/v1/SessionService/Sessions", root_link::links},
    };
    return table;
}

}  // namespace odata::redfish
