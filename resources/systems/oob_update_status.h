// The system's out-of-band firmware update state,
// /redfish/v1/Systems/1/Oem/Tarnwright/OOB: whether an update runs, whether
// the BIOS is in update mode, and the running and staged versions.
#pragma once

#include <cstdint>

#include "framework/redfish.h"

namespace odata::redfish {

// The bit of the firmware update flags that says the BIOS is in update mode.
constexpr uint32_t bios_update_mode_flag = 2;

class oob_update_status : public redfish {
public:
    explicit oob_update_status(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
