// Every handler class of the service, by the name the route table uses.
#include "service/handler_classes.h"

#include "framework/metadata.h"
#include "framework/registry_file_resources.h"
#include "framework/schema_file_resources.h"
#include "framework/service_root.h"
#include "framework/servicedocument.h"
#include "framework/version_documents.h"
#include "resources/chassis/chassis.h"
#include "resources/chassis/chassis_subsystems.h"
#include "resources/chassis/chassiscollection.h"
#include "resources/chassis/networkadapter.h"
#include "resources/chassis/networkadaptercollection.h"
#include "resources/chassis/nic.h"
#include "resources/chassis/pciedevicescollection.h"
#include "resources/chassis/pcieslots.h"
#include "resources/chassis/power.h"
#include "resources/chassis/sata_backplane.h"
#include "resources/chassis/sensor.h"
#include "resources/chassis/sensorcollection.h"
#include "resources/chassis/storage_enclosures.h"
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
#include "resources/systems/bios.h"
#include "resources/systems/bootoptions.h"
#include "resources/systems/bootoptionscollection.h"
#include "resources/systems/computersystem_reset.h"
#include "resources/systems/ethernetinterface.h"
#include "resources/systems/memory.h"
#include "resources/systems/memorycollection.h"
#include "resources/systems/memorysummarymetrics.h"
#include "resources/systems/networkinterfacecollection.h"
#include "resources/systems/networkinterfaces.h"
#include "resources/systems/processor.h"
#include "resources/systems/processorcollection.h"
#include "resources/systems/processormetrics.h"
#include "resources/systems/resetactioninfo.h"
#include "resources/systems/secureboot.h"
#include "resources/systems/simplestorage.h"
#include "resources/systems/simplestoragecollection.h"
#include "resources/systems/storage.h"
#include "resources/systems/system.h"
#include "resources/systems/systemcollection.h"
#include "resources/systems/systems_ethernetinterfacecollection.h"
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
        {"bios", make_handler<bios>},
        {"bootoptions", make_handler<bootoptions>},
        {"bootoptionscollection", make_handler<bootoptionscollection>},
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
        {"ethernetinterface", make_handler<ethernetinterface>},
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
        {"memory", make_handler<memory>},
        {"memorycollection", make_handler<memorycollection>},
        {"memorysummarymetrics", make_handler<memorysummarymetrics>},
        {"messageregisteryfile", make_handler<messageregisteryfile>},
        {"messageregistryfilecollection", make_handler<messageregistryfilecollection>},
        {"metadata", make_handler<metadata>},
        {"networkadapter", make_handler<networkadapter>},
        {"networkadaptercollection", make_handler<networkadaptercollection>},
        {"networkinterfacecollection", make_handler<networkinterfacecollection>},
        {"networkinterfaces", make_handler<networkinterfaces>},
        {"networkprotocol", make_handler<networkprotocol>},
        {"nic", make_handler<nic>},
        {"pciedevicescollection", make_handler<pciedevicescollection>},
        {"pcieslots", make_handler<pcieslots>},
        {"power", make_handler<power>},
        {"processor", make_handler<processor>},
        {"processorcollection", make_handler<processorcollection>},
        {"processormetrics", make_handler<processormetrics>},
        {"redfish_ver", make_handler<redfish_ver>},
        {"replace_certificate", make_handler<replace_certificate>},
        {"replace_certificate_actioninfo", make_handler<replace_certificate_actioninfo>},
        {"resetactioninfo", make_handler<resetactioninfo>},
        {"restapi_ver", make_handler<restapi_ver>},
        {"role", make_handler<role>},
        {"rolecollection", make_handler<rolecollection>},
        {"secureboot", make_handler<secureboot>},
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
        {"simplestorage", make_handler<simplestorage>},
        {"simplestoragecollection", make_handler<simplestoragecollection>},
        {"storage", make_handler<storage>},
        {"storagecollection", make_handler<storagecollection>},
        {"storagepod", make_handler<storagepod>},
        {"diskdrive", make_handler<diskdrive>},
        {"system", make_handler<system>},
        {"systemcollection", make_handler<systemcollection>},
        {"systems_ethernetinterfacecollection", make_handler<systems_ethernetinterfacecollection>},
        {"systems_logentry", make_handler<systems_logentry>},
        {"systems_logentrycollection", make_handler<systems_logentrycollection>},
        {"systems_logservice_clearlog", make_handler<systems_logservice_clearlog>},
        {"systems_logservicecollection", make_handler<systems_logservicecollection>},
        {"systems_logservices", make_handler<systems_logservices>},
        {"thermal", make_handler<thermal>},
        {"thermalsubsystem", make_handler<thermalsubsystem>},
        {"powersubsystem", make_handler<powersubsystem>},
        {"environmentmetrics", make_handler<environmentmetrics>},
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
