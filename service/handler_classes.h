// Handler class name -> factory, for every handler class the service has.
#pragma once

#include "framework/route_resolver.h"

namespace odata::redfish {

const handler_factories& handler_classes();

// The resolver over the whole route table, built once per process.
const route_resolver& service_routes();

}  // namespace odata::redfish
