// The BMC's device GUID as a Redfish UUID.
#pragma once

#include <string>

namespace odata::redfish {

// 8-4-4-4-12 lower-case hexadecimal digits; empty when the BMC has none.
std::string device_uuid_text();

}  // namespace odata::redfish
