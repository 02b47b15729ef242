// The BIOS attribute registry BiosAttributeRegistry.1.0.0, made from the
// platform's table of BIOS setup attributes.
#pragma once

#include <boost/json.hpp>

namespace odata::redfish {

boost::json::object bios_attribute_registry();

}  // namespace odata::redfish
