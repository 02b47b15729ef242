// The route table of the service and its resolver.
#pragma once

#include <vector>

#include "framework/route_resolver.h"

namespace odata::redfish {

// Every route of the service, served or not yet.
const std::vector<route>& route_table();

// The resolver over the route table, built once per process.
const route_resolver& service_routes();

}  // namespace odata::redfish
