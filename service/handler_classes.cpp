// Every handler class of the service, by the name the route table uses.
#include "framework/handler_classes.h"

#include "framework/metadata.h"
#include "framework/registry_file_resources.h"
#include "framework/schema_file_resources.h"
#include "framework/service_root.h"
#include "framework/servicedocument.h"
#include "framework/version_documents.h"
#include "resources/chassis/chassis.h"
#include "resources/chassis/chassiscollection.h"
#include "resources/chassis/power.h"
#include "resources/chassis/sensor.h"
#include "resources/chassis/sensorcollection.h"
#include "resources/chassis/thermal.h"
#include "resources/systems/computersystem_reset.h"
#include "resources/systems/resetactioninfo.h"
#include "resources/systems/system.h"
#include "resources/systems/systemcollection.h"
#include "security/accountservice.h"
#include "security/manageraccount.h"
#include "security/manageraccountcollection.h"
#include "security/role_resources.h"
#include "security/session_resources.h"
#include "tasks/task.h"
#include "tasks/taskcollection.h"
#include "tasks/taskmonitor.h"
#include "tasks/taskservice.h"
#include "update/firmwareinventory.h"
#include "update/simpleupdateactioninfo.h"
#include "update/updateservice.h"
#include "update/updateservice_simpleupdate.h"
#include "update/upload.h"

namespace odata::redfish {

const handler_factories& handler_classes() {
    static const handler_factories classes = {
        {"accountservice", make_handler<accountservice>},
        {"chassis", make_handler<chassis>},
        {"chassiscollection", make_handler<chassiscollection>},
        {"computersystem_reset", make_handler<computersystem_reset>},
        {"json_file_common", make_handler<json_file_common>},
        {"jsonschemafilecollection", make_handler<jsonschemafilecollection>},
        {"manageraccount", make_handler<manageraccount>},
        {"manageraccountcollection", make_handler<manageraccountcollection>},
        {"messageregisteryfile", make_handler<messageregisteryfile>},
        {"messageregistryfilecollection", make_handler<messageregistryfilecollection>},
        {"metadata", make_handler<metadata>},
        {"power", make_handler<power>},
        {"redfish_ver", make_handler<redfish_ver>},
        {"resetactioninfo", make_handler<resetactioninfo>},
        {"restapi_ver", make_handler<restapi_ver>},
        {"role", make_handler<role>},
        {"rolecollection", make_handler<rolecollection>},
        {"sensor", make_handler<sensor>},
        {"sensorcollection", make_handler<sensorcollection>},
        {"service_root", make_handler<service_root>},
        {"servicedocument", make_handler<servicedocument>},
        {"sessionservice", make_handler<sessionservice>},
        {"sessionscollection", make_handler<sessionscollection>},
        {"sessions", make_handler<sessions>},
        {"system", make_handler<system>},
        {"systemcollection", make_handler<systemcollection>},
        {"thermal", make_handler<thermal>},
        {"task", make_handler<task>},
        {"taskcollection", make_handler<taskcollection>},
        {"taskmonitor", make_handler<taskmonitor>},
        {"taskservice", make_handler<taskservice>},
        {"firmwareinventory", make_handler<firmwareinventory>},
        {"firmwareinventorycollection", make_handler<firmwareinventorycollection>},
        {"updateservice", make_handler<updateservice>},
        {"updateservice_simpleupdate", make_handler<updateservice_simpleupdate>},
        {"upload", make_handler<upload>},
        {"simpleupdateactioninfo", make_handler<simpleupdateactioninfo>},
        {"twrfirmwareinventory", make_handler<twrfirmwareinventory>},
        {"twrfirmwareinventorycollection", make_handler<twrfirmwareinventorycollection>},
    };
    return classes;
}

const route_resolver& service_routes() {
    static const route_resolver resolver(route_table(), handler_classes());
    return resolver;
}

}  // namespace odata::redfish
