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
#include "resources/chassis/networkadapter.h"
#include "resources/chassis/networkadaptercollection.h"
#include "resources/chassis/nic.h"
#include "resources/chassis/pciedevicescollection.h"
#include "resources/chassis/pcieslots.h"
#include "resources/chassis/power.h"
#include "resources/chassis/sensor.h"
#include "resources/chassis/sensorcollection.h"
#include "resources/chassis/thermal.h"
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
#include "resources/systems/system.h"
#include "resources/systems/systemcollection.h"
#include "resources/systems/systems_ethernetinterfacecollection.h"
#include "security/accountservice.h"
#include "security/manageraccount.h"
#include "security/manageraccountcollection.h"
#include "security/role_resources.h"
#include "security/session_resources.h"

namespace odata::redfish {

const handler_factories& handler_classes() {
    static const handler_factories classes = {
        {"accountservice", make_handler<accountservice>},
        {"bios", make_handler<bios>},
        {"bootoptions", make_handler<bootoptions>},
        {"bootoptionscollection", make_handler<bootoptionscollection>},
        {"chassis", make_handler<chassis>},
        {"chassiscollection", make_handler<chassiscollection>},
        {"computersystem_reset", make_handler<computersystem_reset>},
        {"ethernetinterface", make_handler<ethernetinterface>},
        {"json_file_common", make_handler<json_file_common>},
        {"jsonschemafilecollection", make_handler<jsonschemafilecollection>},
        {"manageraccount", make_handler<manageraccount>},
        {"manageraccountcollection", make_handler<manageraccountcollection>},
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
        {"nic", make_handler<nic>},
        {"pciedevicescollection", make_handler<pciedevicescollection>},
        {"pcieslots", make_handler<pcieslots>},
        {"power", make_handler<power>},
        {"processor", make_handler<processor>},
        {"processorcollection", make_handler<processorcollection>},
        {"processormetrics", make_handler<processormetrics>},
        {"redfish_ver", make_handler<redfish_ver>},
        {"resetactioninfo", make_handler<resetactioninfo>},
        {"restapi_ver", make_handler<restapi_ver>},
        {"role", make_handler<role>},
        {"rolecollection", make_handler<rolecollection>},
        {"secureboot", make_handler<secureboot>},
        {"sensor", make_handler<sensor>},
        {"sensorcollection", make_handler<sensorcollection>},
        {"service_root", make_handler<service_root>},
        {"servicedocument", make_handler<servicedocument>},
        {"sessionservice", make_handler<sessionservice>},
        {"sessionscollection", make_handler<sessionscollection>},
        {"sessions", make_handler<sessions>},
        {"simplestorage", make_handler<simplestorage>},
        {"simplestoragecollection", make_handler<simplestoragecollection>},
        {"system", make_handler<system>},
        {"systemcollection", make_handler<systemcollection>},
        {"systems_ethernetinterfacecollection", make_handler<systems_ethernetinterfacecollection>},
        {"thermal", make_handler<thermal>},
    };
    return classes;
}

const route_resolver& service_routes() {
    static const route_resolver resolver(route_table(), handler_classes());
    return resolver;
}

}  // namespace odata::redfish
