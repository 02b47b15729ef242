// The BMC that manages the system, as the host's tools look it up,
// /redfish/v1/Systems/1/Oem/Tarnwright/BmcInfo: its firmware, its LAN
// address and whether the host interface reaches it.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class bmc_info : public redfish {
public:
    explicit bmc_info(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
