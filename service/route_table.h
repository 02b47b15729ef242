// The route table of the service and its resolver.
#pragma once

#include "framework/route_resolver.h"

namespace odata::redfish {

// Every route of the service, served or not yet: constant data, not built
// at start.
boost::span<const route> route_table();

// The resolver over the route table, built once per process.
const route_resolver& service_routes();

}  // namespace odata::redfish
