// Every handler class of the service, by the name the route table uses.
#include "service/handler_classes.h"

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
#include "resources/managers/certificate_resources.h"
#include "resources/managers/common_ethernetinterface.h"
#include "resources/managers/host_interfaces.h"
#include "resources/managers/log_entries.h"
#include "resources/managers/log_services.h"
#include "resources/managers/manager.h"
#include "resources/managers/manager_reset.h"
#include "resources/managers/managercollection.h"
#include "resources/managers/managers_ethernetinterfacecollection.h"
#include "resources/managers/networkprotocol.h"
#include "resources/managers/replace_certificate.h"
#include "resources/managers/serial_interfaces.h"
#include "resources/managers/virtualmedia.h"
#include "resources/managers/virtualmedia_actions.h"
#include "resources/systems/computersystem_reset.h"
#include "resources/systems/resetactioninfo.h"
#include "resources/systems/system.h"
#include "resources/systems/systemcollection.h"
#include "security/accountservice.h"
#include "security/manageraccount.h"
#include "security/manageraccountcollection.h"
#include "security/role_resources.h"
#include "security/session_resources.h"
#include "tasks/eventdestination.h"
#include "tasks/eventdestinationcollection.h"
#include "tasks/eventservice.h"
#include "tasks/eventservice_submittestevent.h"
#include "tasks/submittesteventactioninfo.h"

namespace odata::redfish {

const handler_factories& handler_classes() {
    static const handler_factories classes = {
        {"accountservice", make_handler<accountservice>},
        {"certificate", make_handler<certificate>},
        {"certificatecollection", make_handler<certificatecollection>},
        {"certificatelocations", make_handler<certificatelocations>},
        {"certificateservice", make_handler<certificateservice>},
        {"chassis", make_handler<chassis>},
        {"chassiscollection", make_handler<chassiscollection>},
        {"common_ethernetinterface", make_handler<common_ethernetinterface>},
        {"computersystem_reset", make_handler<computersystem_reset>},
        {"eventdestination", make_handler<eventdestination>},
        {"eventdestinationcollection", make_handler<eventdestinationcollection>},
        {"eventservice", make_handler<eventservice>},
        {"eventservice_submittestevent", make_handler<eventservice_submittestevent>},
        {"hostinterface", make_handler<hostinterface>},
        {"insertmediaactioninfo", make_handler<insertmediaactioninfo>},
        {"json_file_common", make_handler<json_file_common>},
        {"jsonschemafilecollection", make_handler<jsonschemafilecollection>},
        {"manager", make_handler<manager>},
        {"manager_reset", make_handler<manager_reset>},
        {"manageraccount", make_handler<manageraccount>},
        {"manageraccountcollection", make_handler<manageraccountcollection>},
        {"managercollection", make_handler<managercollection>},
        {"managers_ethernetinterfacecollection",
         make_handler<managers_ethernetinterfacecollection>},
        {"managers_hostinterfacecollection", make_handler<managers_hostinterfacecollection>},
        {"managers_hostinterfaces_hostethernetinterfacecollection",
         make_handler<managers_hostinterfaces_hostethernetinterfacecollection>},
        {"managers_logentry", make_handler<managers_logentry>},
        {"managers_logentrycollection", make_handler<managers_logentrycollection>},
        {"managers_logservice_clearlog", make_handler<managers_logservice_clearlog>},
        {"managers_logservicecollection", make_handler<managers_logservicecollection>},
        {"managers_logservices", make_handler<managers_logservices>},
        {"messageregisteryfile", make_handler<messageregisteryfile>},
        {"messageregistryfilecollection", make_handler<messageregistryfilecollection>},
        {"metadata", make_handler<metadata>},
        {"networkprotocol", make_handler<networkprotocol>},
        {"power", make_handler<power>},
        {"redfish_ver", make_handler<redfish_ver>},
        {"replace_certificate", make_handler<replace_certificate>},
        {"replace_certificate_actioninfo", make_handler<replace_certificate_actioninfo>},
        {"resetactioninfo", make_handler<resetactioninfo>},
        {"restapi_ver", make_handler<restapi_ver>},
        {"role", make_handler<role>},
        {"rolecollection", make_handler<rolecollection>},
        {"sensor", make_handler<sensor>},
        {"sensorcollection", make_handler<sensorcollection>},
        {"serialInterface", make_handler<serialInterface>},
        {"serialInterfacecollection", make_handler<serialInterfacecollection>},
        {"service_root", make_handler<service_root>},
        {"servicedocument", make_handler<servicedocument>},
        {"sessionservice", make_handler<sessionservice>},
        {"sessionscollection", make_handler<sessionscollection>},
        {"sessions", make_handler<sessions>},
        {"submittesteventactioninfo", make_handler<submittesteventactioninfo>},
        {"system", make_handler<system>},
        {"systemcollection", make_handler<systemcollection>},
        {"thermal", make_handler<thermal>},
        {"virtualmedia", make_handler<virtualmedia>},
        {"virtualmedia_ejectmedia", make_handler<virtualmedia_ejectmedia>},
        {"virtualmedia_insertmedia", make_handler<virtualmedia_insertmedia>},
        {"virtualmediacollection", make_handler<virtualmediacollection>},
    };
    return classes;
}

const route_resolver& service_routes() {
    static const route_resolver resolver(route_table(), handler_classes());
    return resolver;
}

}  // namespace odata::redfish
