// The host's BIOS settings: /redfish/v1/Systems/1/Bios with the values the
// BIOS last reported, and its settings object Bios/SD with the changes
// waiting for the next boot (GET and PATCH).
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class bios : public redfish {
public:
    explicit bios(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;

private:
    bool settings_object() const;
};

}  // namespace odata::redfish
