// Redfish ChassisType from the FRU's chassis type (an SMBIOS chassis type code).
#pragma once

#include <cstdint>

namespace odata::redfish {

// "RackMount" when the FRU gives no type or one without a Redfish match.
const char* chassis_type_name(uint8_t fru_chassis_type);

}  // namespace odata::redfish
