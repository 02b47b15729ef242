// Every handler class of the service, by the name the route table uses.
#include "framework/handler_classes.h"

#include "framework/version_documents.h"

namespace odata::redfish {

const handler_factories& handler_classes() {
    static const handler_factories classes = {
        {"redfish_ver", make_handler<redfish_ver>},
        {"restapi_ver", make_handler<restapi_ver>},
    };
    return classes;
}

const route_resolver& service_routes() {
    static const route_resolver resolver(route_table(), handler_classes());
    return resolver;
}

}  // namespace odata::redfish
